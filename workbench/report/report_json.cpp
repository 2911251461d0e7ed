#include "workbench/report/report_json.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace workbench {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

unsigned byteAt(std::string_view text, std::size_t at) {
  return at < text.size() ? static_cast<unsigned char>(text[at]) : 0U;
}

/// Range of the second byte of a character: it rules out overlong forms, surrogates and what lies past
/// U+10FFFF.
bool isSecondByte(unsigned first, unsigned second) {
  const unsigned low = first == 0xE0U ? 0xA0U : first == 0xF0U ? 0x90U : 0x80U;
  const unsigned high = first == 0xEDU ? 0x9FU : first == 0xF4U ? 0x8FU : 0xBFU;
  return second >= low && second <= high;
}

/// Bytes of the UTF-8 character at `at`; 0 when none begins there.
std::size_t characterLength(std::string_view text, std::size_t at) {
  const unsigned first = byteAt(text, at);
  if (first < 0x80U) return 1;
  const std::size_t length = first >= 0xC2U && first <= 0xDFU   ? 2
                             : first >= 0xE0U && first <= 0xEFU ? 3
                             : first >= 0xF0U && first <= 0xF4U ? 4
                                                                : 0;
  if (length == 0 || !isSecondByte(first, byteAt(text, at + 1))) return 0;
  for (std::size_t i = 2; i < length; ++i)
    if ((byteAt(text, at + i) & 0xC0U) != 0x80U) return 0;
  return length;
}

/// Hands each character of `text` to `append`; a byte that belongs to none as the replacement character.
template <typename Append>
void forEachCharacter(std::string_view text, Append append) {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = characterLength(text, at);
    append(length == 0 ? kReplacement : text.substr(at, length));
    at += length == 0 ? 1 : length;
  }
}

void appendUnicodeEscape(std::string& json, unsigned char code) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  json += "\\u00";
  json += kDigits[code >> 4U];
  json += kDigits[code & 0xFU];
}

}  // namespace

void appendNumber(std::string& json, double value, int digits) {
  if (!std::isfinite(value)) {
    json += "null";
    return;
  }
  std::array<char, 32> text{};
  // Adding zero turns minus zero into zero.
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), value + 0.0, std::chars_format::general, digits);
  json.append(text.data(), end.ptr);
}

void appendInteger(std::string& json, std::int64_t value) {
  json += std::to_string(value);
}

void appendText(std::string& json, std::string_view text) {
  json += '"';
  forEachCharacter(text, [&json](std::string_view character) {
    const char first = character.front();
    if (first == '\n') {
      json += "\\n";
    } else if (first == '"' || first == '\\') {
      json += '\\';
      json += first;
    } else if (static_cast<unsigned char>(first) < 0x20U || first == '<' || first == 0x7F) {
      appendUnicodeEscape(json, static_cast<unsigned char>(first));
    } else {
      json += character;
    }
  });
  json += '"';
}

std::string escapedForHtml(std::string_view text) {
  std::string escaped;
  forEachCharacter(text, [&escaped](std::string_view character) {
    if (character == "&") {
      escaped += "&amp;";
    } else if (character == "<") {
      escaped += "&lt;";
    } else if (character == ">") {
      escaped += "&gt;";
    } else {
      escaped += character;
    }
  });
  return escaped;
}

}  // namespace workbench
