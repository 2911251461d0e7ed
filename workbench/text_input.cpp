#include "workbench/text_input.h"

#include "workbench/input_error.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <system_error>

namespace workbench {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

struct Decoded {
  char32_t character = kReplacement;
  std::size_t length = 1;
  bool isValid = false;
};

/// Lead bytes 0xC0 and 0xC1 would only begin overlong forms, those from 0xF5 on characters beyond U+10FFFF:
/// all invalid.
std::size_t sequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 0;
}

bool isScalar(char32_t c, std::size_t length) {
  // Overlong forms and surrogates are invalid UTF-8. Accepting them would let two byte sequences mean one
  // name.
  if (length == 3) return c >= 0x800 && (c < 0xD800 || c > 0xDFFF);
  if (length == 4) return c >= 0x10000 && c <= 0x10FFFF;
  return true;
}

Decoded decode(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  const std::size_t length = sequenceLength(lead);
  // A broken sequence has length 1, so the caller goes on at the next byte and finds the next whole
  // character.
  if (length == 0 || length > text.size()) return {};
  // The lead byte of n bytes has n + 1 marker bits; the mask leaves the rest.
  char32_t c = length == 1 ? lead : lead & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if ((byte & 0xC0) != 0x80) return {};
    c = (c << 6) | (byte & 0x3Fu);
  }
  if (!isScalar(c, length)) return {};
  return {c, length, true};
}

void appendUtf8(std::string& out, char32_t c) {
  const auto put = [&out](char32_t byte) { out += static_cast<char>(static_cast<unsigned char>(byte)); };
  if (c < 0x80) return put(c);
  if (c < 0x800) {
    put(0xC0 | (c >> 6));
  } else {
    if (c < 0x10000) {
      put(0xE0 | (c >> 12));
    } else {
      put(0xF0 | (c >> 18));
      put(0x80 | ((c >> 12) & 0x3F));
    }
    put(0x80 | ((c >> 6) & 0x3F));
  }
  put(0x80 | (c & 0x3F));
}

bool isUtf8(std::string_view bytes) {
  for (std::size_t i = 0; i < bytes.size();) {
    const Decoded decoded = decode(bytes.substr(i));
    if (!decoded.isValid) return false;
    i += decoded.length;
  }
  return true;
}

bool isHighSurrogate(char32_t c) {
  return c >= 0xD800 && c <= 0xDBFF;
}
bool isLowSurrogate(char32_t c) {
  return c >= 0xDC00 && c <= 0xDFFF;
}

// from_chars ignores the locale and accepts neither blanks nor a prefix, unlike strtod and strtoll: a decimal
// comma in the user's locale must not change how a drawing is read.
template <typename Number, typename... Format>
std::optional<Number> parseWhole(std::string_view text, Format... format) {
  Number value{};
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value, format...);
  // Everything has to be consumed: "12abc" is an error and not 12.
  if (error != std::errc() || stop != end) return std::nullopt;
  return value;
}

/// from_chars accepts no plus sign; a second sign after it must still be an error.
std::string_view withoutPlus(std::string_view text) {
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  return text;
}

}  // namespace

std::string readBytes(const std::filesystem::path& file, const std::string& what) {
  const std::string name = file.string();
  std::error_code error;
  const auto status = std::filesystem::status(file, error);
  if (!std::filesystem::exists(status)) throw InputError({name}, what, "no such file");
  // On Linux a folder can be opened as a stream and fails only when it is read, with a reason that helps
  // nobody.
  if (std::filesystem::is_directory(status)) throw InputError({name}, what, "a folder");
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw InputError({name}, what, "a file that cannot be opened");
  std::string text;
  const auto size = std::filesystem::file_size(file, error);
  // Only a hint: a pipe has no size, and a file may grow while it is read.
  if (!error) text.reserve(size);
  char block[1 << 16];
  // The last read sets the end-of-file state and still delivers bytes, hence the second condition.
  while (stream.read(block, sizeof block) || stream.gcount() != 0)
    text.append(block, static_cast<std::size_t>(stream.gcount()));
  if (stream.bad()) throw InputError({name}, what, "a file that cannot be read");
  return text;
}

// Windows editors write a byte order mark; as part of the first line it would be an unknown group code or
// verb.
std::string readFile(const std::filesystem::path& file, const std::string& what) {
  std::string text = readBytes(file, what);
  if (text.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0) text.erase(0, kByteOrderMark.size());
  return text;
}

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::optional<long long> parseInteger(std::string_view text) {
  return parseWhole<long long>(withoutPlus(text));
}

std::optional<unsigned long long> parseHex(std::string_view text) {
  return parseWhole<unsigned long long>(text, 16);
}

std::optional<double> parseReal(std::string_view text) {
  const auto value = parseWhole<double>(withoutPlus(text));
  // from_chars accepts "inf" and "nan", which no file of ours may contain.
  if (!value || !std::isfinite(*value)) return std::nullopt;
  return value;
}

std::string toUtf8(std::string_view bytes) {
  if (isUtf8(bytes)) return std::string(bytes);
  std::string result;
  // Latin-1 gives every byte a character, so nothing is lost and the text can be traced back to its bytes.
  for (const char c : bytes) appendUtf8(result, static_cast<unsigned char>(c));
  return result;
}

std::string toUtf8(std::wstring_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    auto c = static_cast<char32_t>(text[i]);
    const char32_t next = i + 1 < text.size() ? static_cast<char32_t>(text[i + 1]) : 0;
    // Wide characters are UTF-16 on Windows and UTF-32 on Linux. A text may hold pairs on both, so they are
    // joined on both.
    if (isHighSurrogate(c) && isLowSurrogate(next)) {
      c = 0x10000 + ((c - 0xD800) << 10) + (next - 0xDC00);
      ++i;
    } else if (isHighSurrogate(c) || isLowSurrogate(c) || c > 0x10FFFF) {
      c = kReplacement;
    }
    appendUtf8(result, c);
  }
  return result;
}

std::wstring toWide(std::string_view utf8) {
  std::wstring result;
  for (std::size_t i = 0; i < utf8.size();) {
    const Decoded decoded = decode(utf8.substr(i));
    i += decoded.length;
    // Only Windows needs pairs; the size of wchar_t is the test, so no platform macro is needed.
    if (sizeof(wchar_t) == 2 && decoded.character >= 0x10000) {
      const char32_t offset = decoded.character - 0x10000;
      result += static_cast<wchar_t>(0xD800 + (offset >> 10));
      result += static_cast<wchar_t>(0xDC00 + (offset & 0x3FF));
    } else {
      result += static_cast<wchar_t>(decoded.character);
    }
  }
  return result;
}

std::string upperCase(std::string_view text) {
  std::string result(text);
  for (char& c : result)
    // ASCII by hand: toupper depends on the locale, in which a Turkish "i" would no longer match "I".
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return result;
}

}  // namespace workbench
