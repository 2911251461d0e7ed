/// The text of log entries while they are being streamed. Values look as a stream with its default formatting
/// shows them, without the cost of a stream. One thread at a time.
#ifndef LM_DAEMON_SRC_LOG_TEXT_H
#define LM_DAEMON_SRC_LOG_TEXT_H

#include <charconv>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>
#include <type_traits>

class LogText {
 public:
  /// Text that finds no memory is dropped.
  void append(std::string_view text) noexcept {
    if (text.empty()) return;  // it may have no address, which memcpy may not be given
    if (char* const targetP = extend(text.size())) std::memcpy(targetP, text.data(), text.size());
  }

  /// Makes the text `count` characters longer and returns where to write them; null without memory.
  char* extend(std::size_t count) noexcept {
    if (count > mCapacity - mSize && !grow(count)) return nullptr;
    char* const targetP = mBufferP.get() + mSize;
    mSize += count;
    return targetP;
  }

  /// Integers in the base in force (decimal at first).
  template <typename T>
  void appendInteger(T value) noexcept {
    // A stream shows negative numbers in hexadecimal by their bits.
    if constexpr (std::is_signed_v<T>)
      if (mBase != kDecimal) return appendInteger(static_cast<std::make_unsigned_t<T>>(value));
    // In place: digits that are copied as soon as they are written make the processor wait.
    constexpr std::size_t kLongestInteger = 24;
    char* const startP = extend(kLongestInteger);
    if (startP == nullptr) return;
    char* const endP = std::to_chars(startP, startP + kLongestInteger, value, mBase).ptr;
    mSize -= static_cast<std::size_t>(startP + kLongestInteger - endP);
  }

  /// A decimal number, right-aligned in a field of `width` (at most 24).
  void appendPadded(std::size_t value, std::size_t width) noexcept;

  /// With six significant digits, as a stream shows it by default.
  void appendReal(double value) noexcept;

  /// In hexadecimal after "0x"; a null pointer as "0".
  void appendPointer(const void* pointerP) noexcept;

  /// A header, then ten bytes a row in hexadecimal, each widened to int with its sign.
  void appendHexDump(std::string_view bytes) noexcept;

  void setHexadecimal(bool isHexadecimal) { mBase = isHexadecimal ? kHexadecimal : kDecimal; }
  bool isHexadecimal() const { return mBase == kHexadecimal; }

  std::size_t size() const { return mSize; }
  std::string_view from(std::size_t start) const { return {mBufferP.get() + start, mSize - start}; }

  /// Forgets the text from `start` on, and frees memory that an unusually long entry took.
  void cut(std::size_t start) noexcept;

 private:
  static constexpr int kDecimal = 10;
  static constexpr int kHexadecimal = 16;

  /// Makes room for `count` more characters.
  bool grow(std::size_t count) noexcept;

  std::unique_ptr<char[]> mBufferP;
  std::size_t mCapacity = 0;
  std::size_t mSize = 0;
  int mBase = kDecimal;
};

#endif
