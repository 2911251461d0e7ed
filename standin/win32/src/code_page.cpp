/// Conversion between wide text and the two code pages that the native build knows: 1252 and UTF-8.
#include "operations.h"
#include "standin_process.h"
#include "utf8.h"
#include "windows.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <cwchar>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

using standin::Result;
using standin::windows::Operation;

namespace {

const Operation kWideCharToMultiByte("WideCharToMultiByte", Result::kTellsFailure);

constexpr UINT kWesternEuropean = 1252;

/// Characters of the page's bytes 0x80 ... 0x9F, in which it differs from Latin-1. Windows maps the five
/// bytes that the page leaves undefined to the control characters of the same value.
constexpr std::array<std::uint32_t, 32> kUpperControls = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

std::optional<char> byteOf(wchar_t character) {
  const auto code = static_cast<std::uint32_t>(character);  // NOLINT(bugprone-signed-char-misuse): a wide one
  // The rest of the page is Latin-1. 0x80 ... 0x9F go through the table: of these only the five map to
  // themselves.
  if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) return static_cast<char>(code);
  const auto* const found = std::find(kUpperControls.begin(), kUpperControls.end(), code);
  if (found == kUpperControls.end()) return std::nullopt;
  return static_cast<char>(0x80 + (found - kUpperControls.begin()));
}

wchar_t characterOf(char byte) {
  const auto code = static_cast<unsigned char>(byte);
  const bool isUpperControl = code >= 0x80 && code < 0x80 + kUpperControls.size();
  return static_cast<wchar_t>(isUpperControl ? kUpperControls[code - 0x80u] : code);
}

/// The code page that CP_ACP means. Atomic: the log converts text on any thread.
std::atomic<UINT> ansiPage{kWesternEuropean};

UINT pageOf(UINT codePage) {
  return codePage == CP_ACP ? ansiPage.load() : codePage;
}

/// Bytes of the western European page. A character that it lacks becomes `substitute`.
std::string westernBytes(std::wstring_view wide, char substitute, bool& isReplaced) {
  std::string bytes;
  for (const wchar_t character : wide) {
    const std::optional<char> byte = byteOf(character);
    isReplaced = isReplaced || !byte;
    bytes.push_back(byte.value_or(substitute));
  }
  return bytes;
}

}  // namespace

void standin::windows::setAnsiCodePage(UINT page) {
  ansiPage = page;
}

UINT GetACP() {
  return ansiPage;
}

int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR wide, int wideCount, LPSTR narrow, int narrowSize,
                        LPCSTR replacement, LPBOOL usedReplacement) {
  if (kWideCharToMultiByte.hit()) return 0;
  const UINT page = pageOf(codePage);
  if (wide == nullptr || wideCount == 0 || wideCount < -1 || narrowSize < 0) return 0;
  if (narrow == nullptr && narrowSize > 0) return 0;
  // A count of -1 takes the terminator with it: it is converted and counted in the result.
  const std::wstring_view text(wide,
                               wideCount < 0 ? std::wcslen(wide) + 1 : static_cast<std::size_t>(wideCount));
  bool isReplaced = false;
  std::string bytes;
  if (page == kWesternEuropean) {
    bytes = westernBytes(text, replacement == nullptr ? '?' : *replacement, isReplaced);
    if (usedReplacement != nullptr) *usedReplacement = isReplaced ? TRUE : FALSE;
  } else if (page == CP_UTF8) {
    // Windows refuses the whole call when it is asked to replace what UTF-8 never lacks.
    if (replacement != nullptr || usedReplacement != nullptr || flags != 0) return 0;
    bytes = standin::windows::utf8Bytes(text);
  } else {
    return 0;
  }
  // A size of 0 only asks for the size that is needed. A buffer that is too small makes the call fail.
  if (narrowSize == 0) return static_cast<int>(bytes.size());
  if (bytes.size() > static_cast<std::size_t>(narrowSize)) return 0;
  std::copy(bytes.begin(), bytes.end(), narrow);
  return static_cast<int>(bytes.size());
}

int MultiByteToWideChar(UINT codePage, DWORD /*flags*/, LPCSTR narrow, int narrowCount, LPWSTR wide,
                        int wideSize) {
  const UINT page = pageOf(codePage);
  if (page != kWesternEuropean && page != CP_UTF8) return 0;
  if (narrow == nullptr || narrowCount == 0 || narrowCount < -1 || wideSize < 0) return 0;
  if (wide == nullptr && wideSize > 0) return 0;
  const std::string_view bytes(
      narrow, narrowCount < 0 ? std::strlen(narrow) + 1 : static_cast<std::size_t>(narrowCount));
  std::wstring text;
  if (page == CP_UTF8)
    text = standin::windows::utf8Text(bytes);
  else
    // Every byte of the page has a character, so this direction cannot fail.
    std::transform(bytes.begin(), bytes.end(), std::back_inserter(text), characterOf);
  if (wideSize == 0) return static_cast<int>(text.size());
  if (text.size() > static_cast<std::size_t>(wideSize)) return 0;
  std::copy(text.begin(), text.end(), wide);
  return static_cast<int>(text.size());
}
