/// Between the host's wide texts and the 8-bit texts of files and paths, in the ANSI code page. Any thread.
#ifndef COMMON_SOURCES_ANSI_TEXT_H
#define COMMON_SOURCES_ANSI_TEXT_H

#include <string>
#include <string_view>

std::wstring wideFromAnsi(std::string_view text);

/// Characters that the code page does not hold become its default character.
std::string ansiFromWide(const wchar_t* text);

#endif
