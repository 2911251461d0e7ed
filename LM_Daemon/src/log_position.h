/// Where in the sources a log entry comes from, as a line of the log shows it in fixed columns. Made by the
/// compiler where the names are constants, so that an entry only copies it. Any thread.
#ifndef LM_DAEMON_SRC_LOG_POSITION_H
#define LM_DAEMON_SRC_LOG_POSITION_H

#include <array>
#include <cstddef>
#include <string_view>

/// File, line, class and method in columns of 16, 4 and 32 characters, "| " between them. A column that would
/// be longer shows "*" and its end; a line number of more than four digits takes the room it needs.
class LogPosition {
 public:
  static constexpr std::size_t kFileWidth = 16;
  static constexpr std::size_t kLineWidth = 4;
  static constexpr std::size_t kMethodWidth = 32;
  static constexpr std::string_view kGap = "| ";
  /// Digits and sign of any int.
  static constexpr std::size_t kLongestLine = 11;
  static constexpr std::size_t kMaxSize =
      kFileWidth + kGap.size() + kLongestLine + kGap.size() + kMethodWidth;

  /// Shows the part of `sourceFile` after its last backslash, and `methodName` after `className` and "::",
  /// whether or not it names the class itself.
  constexpr LogPosition(std::string_view sourceFile, int line, std::string_view className,
                        std::string_view methodName) {
    // Without a backslash npos + 1 is 0: the whole path.
    appendColumn({sourceFile.substr(sourceFile.rfind('\\') + 1), {}, {}}, kFileWidth, true);
    append(kGap);
    appendLine(line);
    append(kGap);
    appendColumn({className, "::", methodName}, kMethodWidth, false);
  }

  constexpr std::string_view text() const { return {mText.data(), mSize}; }

 private:
  using Parts = std::array<std::string_view, 3>;

  constexpr void append(char character) { mText[mSize++] = character; }
  constexpr void append(std::string_view text) {
    for (const char character : text) append(character);
  }
  constexpr void appendBlanks(std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) append(' ');
  }

  constexpr void appendLine(int line) {
    std::array<char, kLongestLine> digits = {};
    std::size_t start = digits.size();
    unsigned rest = line < 0 ? 0u - static_cast<unsigned>(line) : static_cast<unsigned>(line);
    do {
      digits[--start] = static_cast<char>('0' + rest % 10);
      rest /= 10;
    } while (rest > 0);
    if (line < 0) digits[--start] = '-';
    const std::size_t size = digits.size() - start;
    if (size < kLineWidth) appendBlanks(kLineWidth - size);
    append(std::string_view(&digits[start], size));
  }

  /// The parts as one text, in a column of that width.
  constexpr void appendColumn(const Parts& parts, std::size_t width, bool isRightAligned) {
    std::size_t size = 0;
    for (const std::string_view part : parts) size += part.size();
    const std::size_t padding = size < width ? width - size : 0;
    std::size_t skipped = 0;
    if (isRightAligned) appendBlanks(padding);
    if (size > width) {
      append('*');
      skipped = size - (width - 1);
    }
    for (std::string_view part : parts) {
      const std::size_t cut = skipped < part.size() ? skipped : part.size();
      part.remove_prefix(cut);
      skipped -= cut;
      append(part);
    }
    if (!isRightAligned) appendBlanks(padding);
  }

  std::array<char, kMaxSize> mText = {};
  std::size_t mSize = 0;
};

#endif
