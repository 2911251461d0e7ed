/// Text between the ANSI code page, in which the module keeps its texts, and the wide characters of Windows.
/// Windows builds only. Any thread.
#ifndef UTIL_WIDE_TEXT_H
#define UTIL_WIDE_TEXT_H

#include <string>
#include <string_view>

/// Characters that the code page lacks become '?' or what Windows takes for similar.
std::string toAnsi(std::wstring_view text);
std::wstring fromAnsi(std::string_view text);

/// Value of an environment variable, empty when there is none.
std::wstring environmentValue(const wchar_t* nameP);

#endif
