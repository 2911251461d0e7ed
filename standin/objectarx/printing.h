/// Lines on the command line.
#ifndef STANDIN_PRINTING_H
#define STANDIN_PRINTING_H

#include "adesk.h"

#include <cstdarg>
#include <string>

namespace standin::host {

/// What the host itself prints. Not while the host's lock is held.
void hostPrint(const std::wstring& text);

/// What a module prints: acutPrintf.
int modulePrint(const ACHAR* format, va_list arguments);

}  // namespace standin::host

#endif
