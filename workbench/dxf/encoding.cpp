#include "workbench/dxf/encoding.h"

#include "workbench/dxf/header.h"
#include "workbench/platform/code_page.h"
#include "workbench/text_input.h"

#include <algorithm>
#include <array>
#include <optional>

namespace workbench {
namespace {

/// Names in $DWGCODEPAGE that do not contain the code page's number. All others are "ANSI_" or another prefix
/// and the number.
struct NamedPage {
  std::string_view name;
  int page;
};
constexpr std::array<NamedPage, 5> kNamedPages = {
    {{"GB2312", 936}, {"BIG5", 950}, {"KSC5601", 949}, {"JOHAB", 1361}, {"ISO8859-1", 28591}}};

/// Code pages by the digit of `\M+n`. The format fixes the order, which is not that of the numbers: 1
/// Shift-JIS, 2 Big5, 3 Wansung, 4 Johab, 5 GBK.
constexpr std::array<int, 5> kMultiBytePages = {932, 950, 949, 1361, 936};

// Always four, with leading zeros: a digit after them is text.
constexpr std::size_t kEscapeDigits = 4;

int pageOf(const std::string& name) {
  for (const NamedPage& named : kNamedPages)
    if (named.name == name) return named.page;
  // Upper-case prefixes only: the caller has converted the name, whose case differs from program to program.
  for (const std::string_view prefix : {"ANSI_", "DOS", "CP"})
    if (name.compare(0, prefix.size(), prefix) == 0)
      return static_cast<int>(parseInteger(std::string_view(name).substr(prefix.size())).value_or(0));
  return 0;
}

constexpr std::size_t kUnitSize = 3 + kEscapeDigits;

/// The UTF-16 unit that a "\\U+1234" at the start of `text` stands for; none when there is none.
std::optional<wchar_t> unitAt(std::string_view text) {
  if (text.size() < kUnitSize || text.substr(0, 3) != "\\U+") return std::nullopt;
  const auto code = parseHex(text.substr(3, kEscapeDigits));
  return code ? std::optional(static_cast<wchar_t>(*code)) : std::nullopt;
}

/// The characters of the escapes at the start of `text`, and how long these are; none when there are none.
struct Escape {
  std::string characters;
  std::size_t length = 0;
};
std::optional<Escape> escapeAt(std::string_view text) {
  // All at once: a character beyond U+FFFF takes two, which only together are a character.
  std::wstring units;
  for (std::string_view rest = text; const auto unit = unitAt(rest); rest.remove_prefix(kUnitSize))
    units += *unit;
  if (!units.empty()) return Escape{toUtf8(units), units.size() * kUnitSize};
  if (text.substr(0, 3) != "\\M+" || text.size() < 4 + kEscapeDigits || text[3] < '1' || text[3] > '5')
    return std::nullopt;
  const auto code = parseHex(text.substr(4, kEscapeDigits));
  if (!code) return std::nullopt;
  // The lead byte is written first, whatever the byte order of the machine that wrote the file.
  const char bytes[] = {static_cast<char>(*code >> 8), static_cast<char>(*code & 0xFF)};
  const auto character =
      decodedCodePage({bytes, sizeof bytes}, kMultiBytePages[static_cast<std::size_t>(text[3] - '1')]);
  if (!character) return std::nullopt;
  return Escape{*character, 4 + kEscapeDigits};
}

}  // namespace

int dxfCodePage(const std::vector<DxfGroup>& groups) {
  // Release names have equal length, so comparing them as text orders them. A missing name is empty and sorts
  // before all.
  if (headerText(groups, "$ACADVER") >= "AC1021") return 0;
  return pageOf(upperCase(headerText(groups, "$DWGCODEPAGE")));
}

std::string decodeDxfText(std::string_view bytes, int codePage) {
  const bool isAscii =
      std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
  std::optional<std::string> decoded;
  // ASCII is the same in every code page. Most texts take this way out and cost no conversion.
  if (!isAscii && codePage != 0) decoded = decodedCodePage(bytes, codePage);
  // Some programs name a code page and write UTF-8 all the same. Bytes that the page rejects are tried as
  // that.
  std::string text = decoded ? *decoded : toUtf8(bytes);
  if (text.find("\\U+") == std::string::npos && text.find("\\M+") == std::string::npos) return text;
  std::string result;
  // Escapes are replaced after the conversion: in Shift-JIS a backslash can be the second byte of a
  // character.
  for (std::string_view rest = text; !rest.empty();) {
    const auto escape = escapeAt(rest);
    // What only looks like an escape stays as it is, so a Windows path in a text survives.
    result += escape ? std::string_view(escape->characters) : rest.substr(0, 1);
    rest.remove_prefix(escape ? escape->length : 1);
  }
  return result;
}

}  // namespace workbench
