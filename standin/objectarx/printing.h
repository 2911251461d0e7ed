/// Lines on the command line that the host itself prints.
#ifndef STANDIN_PRINTING_H
#define STANDIN_PRINTING_H

#include <string>

namespace standin::host {

/// Not while the host's lock is held.
void hostPrint(const std::wstring& text);

}  // namespace standin::host

#endif
