/// The texts that the device's keys send to the command line.
#ifndef COMMON_SOURCES_COMMAND_TEXT_H
#define COMMON_SOURCES_COMMAND_TEXT_H

#include <string>
#include <string_view>
#include <vector>

/// Zoom to everything as a command of its own, for a layout. There is no apostrophe: it waits for the command
/// under way.
inline constexpr const wchar_t* kZoomAll = L"_ZOOM _ALL ";
/// Two ESC: cancels whatever command is under way.
inline constexpr const wchar_t* kCancel = L"\x1b\x1b";

/// Splits a menu macro at every ";", as a stream is read up to a delimiter again and again: two in a row hold
/// an empty token between them, one at the very end adds none, an empty macro has no token.
std::vector<std::string> splitMacro(std::string_view macro);

/// What is typed for one token of a macro: an empty one is Enter, one that begins with "M=" is evaluated by
/// `menucmd`, any other is a command. `token` is in the ANSI code page.
std::wstring commandOfToken(std::string_view token);

/// Makes the host load the .NET assembly of this path.
std::wstring netloadCommand(std::wstring path);

#endif
