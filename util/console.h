/// Lines for the standard streams. Each line is written in one piece, so lines of several threads never mix,
/// and no iostream state is shared between them. Any thread.
#ifndef UTIL_CONSOLE_H
#define UTIL_CONSOLE_H

#include <string_view>

/// Writes `text` and a line end to standard output and flushes it. What cannot be written is dropped.
void printLine(std::string_view text) noexcept;

/// The same to standard error.
void printErrorLine(std::string_view text) noexcept;

#endif
