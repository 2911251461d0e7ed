#include "LM_Daemon/src/log_text.h"

#include <cstdint>

namespace {

constexpr std::size_t kKeptSize = 64 * 1024;
constexpr int kSignificantDigits = 6;
constexpr std::size_t kBytesPerRow = 10;
constexpr std::size_t kIndexWidth = 4;

}  // namespace

void LogText::append(std::string_view text) noexcept {
  try {
    mText.append(text);
  } catch (...) {
    // The log never fails its caller.
  }
}

void LogText::appendReal(double value) noexcept {
  char digits[40];
  const auto result =
      std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, kSignificantDigits);
  append({digits, static_cast<std::size_t>(result.ptr - digits)});
}

void LogText::appendPadded(std::size_t value, std::size_t width) noexcept {
  static constexpr std::string_view kBlanks = "                ";
  char digits[24];
  const char* const endP = std::to_chars(digits, digits + sizeof digits, value).ptr;
  const auto size = static_cast<std::size_t>(endP - digits);
  if (size < width) append(kBlanks.substr(0, width - size));
  append({digits, size});
}

void LogText::appendPointer(const void* pointerP) noexcept {
  const int base = mBase;
  append(pointerP != nullptr ? "0x" : "");
  mBase = kHexadecimal;
  appendInteger(reinterpret_cast<std::uintptr_t>(pointerP));
  mBase = base;
}

void LogText::appendHexDump(std::string_view bytes) noexcept {
  const int base = mBase;
  append("\n       0  1  2  3  4  5  6  7  8  9");
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i % kBytesPerRow == 0) {
      append("\n");
      appendPadded(i, kIndexWidth);
      append(": ");
    }
    mBase = kHexadecimal;
    appendInteger(static_cast<int>(static_cast<signed char>(bytes[i])));
    append(" ");
  }
  mBase = base;
}

void LogText::cut(std::size_t start) noexcept {
  mText.resize(start);
  if (start == 0 && mText.capacity() > kKeptSize) mText = std::string();
}
