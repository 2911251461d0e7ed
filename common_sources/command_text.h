/// The texts that the device's keys send to the command line.
#ifndef COMMON_SOURCES_COMMAND_TEXT_H
#define COMMON_SOURCES_COMMAND_TEXT_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Transparent zoom to the extents; its apostrophe lets it run while another command waits for input.
inline constexpr const wchar_t* kZoomAllTransparent = L"'_ZOOM _ALL ";
/// The same as a command of its own, for a layout.
inline constexpr const wchar_t* kZoomAll = L"_ZOOM _ALL ";
/// Two ESC: cancels whatever command is under way.
inline constexpr const wchar_t* kCancel = L"\x1b\x1b";

/// The standard view of a special function's event code; null for any other code.
const wchar_t* viewCommand(std::int32_t eventCode);

/// Splits a menu macro at every ";", as a stream is read up to a delimiter again and again: two in a row hold
/// an empty token between them, one at the very end adds none, an empty macro has no token.
std::vector<std::string> splitMacro(std::string_view macro);

/// What is typed for one token of a macro: an empty one is Enter, one that begins with "M=" is evaluated by
/// `menucmd`, any other is a command. `token` is in the ANSI code page.
std::wstring commandOfToken(std::string_view token);

/// Makes the host load a .NET assembly; `path` with forward slashes, since a backslash is an escape in
/// AutoLISP.
std::wstring netloadCommand(const std::wstring& path);

#endif
