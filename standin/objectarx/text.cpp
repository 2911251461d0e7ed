/// Names, keywords and numbers of the host's command line.
#include "text.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cwchar>

namespace standin::host {
namespace {

wchar_t upper(wchar_t c) {
  // Not towupper: it depends on the locale, and in Turkish an i would not become an I.
  return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - L'a' + L'A') : c;
}

}  // namespace

std::wstring upper(std::wstring_view text) {
  std::wstring result(text);
  for (wchar_t& c : result) c = upper(c);
  return result;
}

bool isSameName(std::wstring_view a, std::wstring_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](wchar_t x, wchar_t y) { return upper(x) == upper(y); });
}

std::wstring keyword(const std::wstring& input) {
  // An underscore asks for the global name, a dot for the host's own command; both may lead a keyword.
  const std::size_t start = input.find_first_not_of(L"_.");
  return start == std::wstring::npos ? upper(input) : upper(input.substr(start));
}

bool parseNumber(const std::wstring& text, double& value) {
  // wcstod alone would accept blanks, "inf", "nan" and hexadecimal numbers.
  if (text.empty() || text.find_first_not_of(L"+-0123456789.eE") != std::wstring::npos) return false;
  wchar_t* endP = nullptr;
  const double number = std::wcstod(text.c_str(), &endP);
  // A number too large for a double becomes infinite.
  if (*endP != L'\0' || !std::isfinite(number)) return false;
  value = number;
  return true;
}

bool parseInteger(const std::wstring& text, int& value) {
  if (text.find_first_not_of(L"+-0123456789") != std::wstring::npos) return false;
  double number = 0;
  // A double holds every int exactly.
  if (!parseNumber(text, number) || number < INT_MIN || number > INT_MAX) return false;
  value = static_cast<int>(number);
  return true;
}

}  // namespace standin::host
