#include "workbench/input_error.h"

#include <array>

namespace workbench {
namespace {

// Enough to recognise the text; a line of a binary file may have megabytes.
constexpr std::size_t kLongestQuote = 40;

std::string message(const FilePlace& place, const std::string& expected, const std::string& found) {
  std::string text(place.file);
  // FILE:LINE is the form that editors and terminals turn into a link.
  if (place.line != 0) text += ":" + std::to_string(place.line);
  return text + ": expected " + expected + ", found " + found;
}

/// Bytes that are not printable ASCII are escaped: in a terminal they could move the cursor or change its
/// colours.
void appendPrintable(std::string& out, char c) {
  static constexpr std::string_view kHex = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(c);
  if (byte >= 0x20 && byte < 0x7F) {
    out += c;
    return;
  }
  out += "\\x";
  out += kHex[byte >> 4];
  out += kHex[byte & 0xF];
}

}  // namespace

InputError::InputError(const FilePlace& place, const std::string& expected, const std::string& found)
    : std::runtime_error(message(place, expected, found)),
      mFile(place.file),
      mLine(place.line),
      mExpected(expected) {}

std::string inQuotes(std::string_view text) {
  std::string result = "\"";
  for (const char c : text.substr(0, kLongestQuote)) appendPrintable(result, c);
  if (text.size() > kLongestQuote) result += "...";
  return result + "\"";
}

}  // namespace workbench
