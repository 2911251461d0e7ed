/// The command line: text comes in as it is typed or sent, letter by letter; a blank or newline ends an
/// input, ESC ends a command. Main thread only, and not while the host's lock is held.
#ifndef STANDIN_COMMAND_LINE_H
#define STANDIN_COMMAND_LINE_H

#include "active_command.h"

#include <string>

namespace standin::host {

/// Takes text; what has not ended waits for more.
void feed(CommandLine& line, const std::wstring& text);

}  // namespace standin::host

#endif
