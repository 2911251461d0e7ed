#include "LM_Daemon/src/log_text.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <new>
#include <utility>

namespace {

// The first buffer holds any usual line, so an entry allocates once in the life of the log.
constexpr std::size_t kUsualSize = 1024;
constexpr std::size_t kKeptSize = std::size_t{64} * 1024;
// A stream's default precision. to_chars without a precision would print up to 17 digits.
constexpr int kSignificantDigits = 6;
/// Digits of any std::size_t, and every width that is asked for.
constexpr std::size_t kLongestField = 24;
constexpr std::size_t kBytesPerRow = 10;
constexpr std::size_t kIndexWidth = 4;

}  // namespace

bool LogText::grow(std::size_t count) noexcept {
  const std::size_t capacity = std::max(kUsualSize, 2 * (mSize + count));
  std::unique_ptr<char[]> bufferP(new (std::nothrow) char[capacity]);
  if (bufferP == nullptr) return false;
  // Without a first buffer there is no source address, which memcpy may not be given.
  if (mSize > 0) std::memcpy(bufferP.get(), mBufferP.get(), mSize);
  mBufferP = std::move(bufferP);
  mCapacity = capacity;
  return true;
}

void LogText::appendReal(double value) noexcept {
  // "general" with six digits gives fewer than 15 characters for every double, inf and nan included.
  char digits[40];
  const auto result =
      std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, kSignificantDigits);
  append({digits, static_cast<std::size_t>(result.ptr - digits)});
}

void LogText::appendPadded(std::size_t value, std::size_t width) noexcept {
  char digits[kLongestField];
  std::memset(digits, ' ', sizeof digits);
  char* startP = digits + sizeof digits;
  do {
    *--startP = static_cast<char>('0' + value % 10);
    value /= 10;
  } while (value > 0);
  const auto size = std::max(width, static_cast<std::size_t>(digits + sizeof digits - startP));
  append({digits + sizeof digits - size, size});
}

void LogText::appendPointer(const void* pointerP) noexcept {
  // The base in force belongs to the entry: a pointer must not change the integers after it.
  const int base = mBase;
  // The "0x" is missing for null, as in a stream.
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
    // Signed: bytes from 0x80 on are shown as ffffff80 and so on, which readers of the log are used to.
    appendInteger(static_cast<int>(static_cast<signed char>(bytes[i])));
    append(" ");
  }
  mBase = base;
}

void LogText::cut(std::size_t start) noexcept {
  assert(start <= mSize && "only text that is there can be cut");
  mSize = start;
  // Never while an outer entry still has text in the buffer.
  if (start > 0 || mCapacity <= kKeptSize) return;
  mBufferP.reset();
  mCapacity = 0;
}
