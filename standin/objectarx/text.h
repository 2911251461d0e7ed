/// Parses and compares the host's texts: names, keywords, numbers.
#ifndef STANDIN_TEXT_H
#define STANDIN_TEXT_H

#include <string>
#include <string_view>

namespace standin::host {

/// Letters A to Z in capitals; the host's names and keywords take no other letters.
std::wstring upper(std::wstring_view text);
/// Names are the same whatever the case of their letters.
bool isSameName(std::wstring_view a, std::wstring_view b);
/// A keyword without the underscore that says it is not in a local language, in capitals.
std::wstring keyword(const std::wstring& input);
/// A number written whole; false for anything else.
bool parseNumber(const std::wstring& text, double& value);
bool parseInteger(const std::wstring& text, int& value);

}  // namespace standin::host

#endif
