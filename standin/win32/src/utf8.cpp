/// UTF-8 both ways, with U+FFFD for what is not well formed, as Windows converts it.
#include "utf8.h"

#include <cstdint>

namespace standin::windows {
namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

bool isCharacter(std::uint32_t code) {
  // Surrogates are no characters: wide characters have 32 bits here, so none is split in two.
  return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

void append(std::string& bytes, std::uint32_t code) {
  const auto continuation = [&](unsigned shift) {
    bytes.push_back(static_cast<char>(0x80 | ((code >> shift) & 0x3F)));
  };
  if (code < 0x80) {
    bytes.push_back(static_cast<char>(code));
  } else if (code < 0x800) {
    bytes.push_back(static_cast<char>(0xC0 | (code >> 6)));
    continuation(0);
  } else if (code < 0x10000) {
    bytes.push_back(static_cast<char>(0xE0 | (code >> 12)));
    continuation(6);
    continuation(0);
  } else {
    bytes.push_back(static_cast<char>(0xF0 | (code >> 18)));
    continuation(12);
    continuation(6);
    continuation(0);
  }
}

/// Bytes that follow a first byte; -1 when it cannot be a first one. 0xC0 and 0xC1 could only begin a
/// character that one byte holds; above 0xF4 all characters are beyond U+10FFFF.
int continuationsOf(unsigned char first) {
  if (first < 0x80) return 0;
  if (first >= 0xC2 && first < 0xE0) return 1;
  if (first >= 0xE0 && first < 0xF0) return 2;
  return first >= 0xF0 && first < 0xF5 ? 3 : -1;
}

/// Takes one character off the front. An overlong form, one that fewer bytes could hold, is not accepted.
std::uint32_t take(std::string_view& bytes) {
  constexpr std::uint32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
  const auto first = static_cast<unsigned char>(bytes.front());
  const int count = continuationsOf(first);
  const auto length = static_cast<std::size_t>(count + 1);
  // A first byte carries 5, 4 or 3 bits: one fewer for each byte that follows.
  std::uint32_t code = count <= 0 ? first : first & (0x3Fu >> count);
  bool isWhole = count >= 0 && length <= bytes.size();
  for (std::size_t i = 1; isWhole && i < length; ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    isWhole = (byte & 0xC0) == 0x80;
    code = code << 6 | (byte & 0x3Fu);
  }
  isWhole = isWhole && code >= kSmallest[count] && isCharacter(code);
  // Decoding resumes at the byte after a bad one, so a whole character there survives.
  bytes.remove_prefix(isWhole ? length : 1);
  return isWhole ? code : kReplacement;
}

}  // namespace

std::string utf8Bytes(std::wstring_view text) {
  std::string bytes;
  for (const wchar_t character : text) {
    const auto code = static_cast<std::uint32_t>(character);
    append(bytes, isCharacter(code) ? code : kReplacement);
  }
  return bytes;
}

std::wstring utf8Text(std::string_view bytes) {
  std::wstring text;
  while (!bytes.empty()) text.push_back(static_cast<wchar_t>(take(bytes)));
  return text;
}

}  // namespace standin::windows
