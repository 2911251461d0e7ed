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
  static constexpr std::size_t kFileWidth = 16;
  static constexpr std::size_t kLineWidth = 4;
  static constexpr std::size_t kMethodWidth = 32;
  static constexpr std::string_view kGap = "| ";
  /// Digits and sign of any int.
  static constexpr std::size_t kLongestLine = 11;
  static constexpr std::size_t kMaxSize =
      kFileWidth + kGap.size() + kLongestLine + kGap.size() + kMethodWidth;

  /// `sourceFile` is shown behind its last backslash. `methodName` is shown behind `className` and "::",
  /// whether or not it names the class itself.
  LogPosition(std::string_view sourceFile, int line, std::string_view className, std::string_view methodName)
      : mSize(write(mText.data(), fileNameOf(sourceFile), line, className, methodName)) {}

  std::string_view text() const { return {mText.data(), mSize}; }

 private:
  static std::size_t write(char* targetP, std::string_view fileName, int line, std::string_view className,
                           std::string_view methodName);

  /// Without a backslash npos + 1 is 0: the whole path.
  static std::string_view fileNameOf(std::string_view path) { return path.substr(path.rfind('\\') + 1); }

  std::array<char, kMaxSize> mText;
  std::size_t mSize;
};

#endif
