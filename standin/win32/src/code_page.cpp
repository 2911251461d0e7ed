#include "operations.h"
#include "windows.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <cwchar>
#include <optional>
#include <string>

using standin::Result;
using standin::windows::Operation;

namespace {

const Operation kWideCharToMultiByte("WideCharToMultiByte", Result::kTellsFailure);

/// Characters of the page's bytes 0x80 ... 0x9F, in which it differs from Latin-1; five of them stand for
/// themselves.
constexpr std::array<std::uint32_t, 32> kUpperControls = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

std::optional<char> byteOf(wchar_t character) {
  const auto code = static_cast<std::uint32_t>(character);  // NOLINT(bugprone-signed-char-misuse): a wide one
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

}  // namespace

int WideCharToMultiByte(UINT codePage, DWORD /*flags*/, LPCWSTR wide, int wideCount, LPSTR narrow,
                        int narrowSize, LPCSTR replacement, LPBOOL usedReplacement) {
  if (kWideCharToMultiByte.hit()) return 0;
  if (codePage != CP_ACP || wide == nullptr || wideCount == 0 || wideCount < -1 || narrowSize < 0) return 0;
  if (narrow == nullptr && narrowSize > 0) return 0;
  const std::size_t count = wideCount < 0 ? std::wcslen(wide) + 1 : static_cast<std::size_t>(wideCount);
  const char substitute = replacement == nullptr ? '?' : *replacement;
  bool isReplaced = false;
  std::string bytes;
  for (std::size_t i = 0; i < count; ++i) {
    const std::optional<char> byte = byteOf(wide[i]);
    isReplaced = isReplaced || !byte;
    bytes.push_back(byte.value_or(substitute));
  }
  if (usedReplacement != nullptr) *usedReplacement = isReplaced ? TRUE : FALSE;
  if (narrowSize == 0) return static_cast<int>(bytes.size());
  if (bytes.size() > static_cast<std::size_t>(narrowSize)) return 0;
  std::copy(bytes.begin(), bytes.end(), narrow);
  return static_cast<int>(bytes.size());
}

int MultiByteToWideChar(UINT codePage, DWORD /*flags*/, LPCSTR narrow, int narrowCount, LPWSTR wide,
                        int wideSize) {
  if (codePage != CP_ACP || narrow == nullptr || narrowCount == 0 || narrowCount < -1 || wideSize < 0)
    return 0;
  if (wide == nullptr && wideSize > 0) return 0;
  const std::size_t count = narrowCount < 0 ? std::strlen(narrow) + 1 : static_cast<std::size_t>(narrowCount);
  if (wideSize == 0) return static_cast<int>(count);
  if (count > static_cast<std::size_t>(wideSize)) return 0;
  std::transform(narrow, narrow + count, wide, characterOf);
  return static_cast<int>(count);
}
