/// Where in the sources a log entry comes from, as a line of the log shows it in fixed columns. Any thread.
#ifndef LM_DAEMON_SRC_LOG_POSITION_H
#define LM_DAEMON_SRC_LOG_POSITION_H

#include <array>
#include <cstddef>
#include <string_view>

/// File, line, class and method in columns of 16, 4 and 32 characters, "| " between them. A column that would
/// be longer shows "*" and its end; a line number of more than four digits takes the room it needs.
class LogPosition {
 public:
  /// `sourceFile` is shown behind its last backslash. `methodName` is shown behind `className` and "::",
  /// whether or not it names the class itself.
  LogPosition(std::string_view sourceFile, int line, std::string_view className, std::string_view methodName);

  std::string_view text() const { return {mText.data(), mSize}; }

 private:
  void append(std::string_view text);
  void fill(std::size_t count);
  void appendFile(std::string_view fileName);
  void appendLine(int line);
  void appendMethod(std::string_view className, std::string_view methodName);

  static constexpr std::size_t kFileWidth = 16;
  static constexpr std::size_t kLineWidth = 4;
  static constexpr std::size_t kMethodWidth = 32;
  /// Digits and sign of any int.
  static constexpr std::size_t kLongestLine = 11;

  std::array<char, kFileWidth + 2 + kLongestLine + 2 + kMethodWidth> mText;
  std::size_t mSize = 0;
};

#endif
