#include "LM_Daemon/src/log_position.h"

#include <charconv>
#include <cstring>

LogPosition::LogPosition(std::string_view sourceFile, int line, std::string_view className,
                         std::string_view methodName) {
  // Without a backslash npos + 1 is 0: the whole path.
  appendFile(sourceFile.substr(sourceFile.rfind('\\') + 1));
  append("| ");
  appendLine(line);
  append("| ");
  appendMethod(className, methodName);
}

void LogPosition::append(std::string_view text) {
  std::memcpy(mText.data() + mSize, text.data(), text.size());
  mSize += text.size();
}

void LogPosition::fill(std::size_t count) {
  std::memset(mText.data() + mSize, ' ', count);
  mSize += count;
}

void LogPosition::appendFile(std::string_view fileName) {
  if (fileName.size() > kFileWidth) {
    append("*");
    append(fileName.substr(fileName.size() - (kFileWidth - 1)));
    return;
  }
  fill(kFileWidth - fileName.size());
  append(fileName);
}

void LogPosition::appendLine(int line) {
  char digits[kLongestLine];
  const char* const endP = std::to_chars(digits, digits + kLongestLine, line).ptr;
  const std::string_view text(digits, static_cast<std::size_t>(endP - digits));
  if (text.size() < kLineWidth) fill(kLineWidth - text.size());
  append(text);
}

void LogPosition::appendMethod(std::string_view className, std::string_view methodName) {
  static constexpr std::string_view kScope = "::";
  const std::string_view parts[] = {className, kScope, methodName};
  const std::size_t size = className.size() + kScope.size() + methodName.size();
  std::size_t skipped = 0;
  if (size > kMethodWidth) {
    append("*");
    skipped = size - (kMethodWidth - 1);
  }
  for (const std::string_view part : parts) {
    const std::size_t cut = skipped < part.size() ? skipped : part.size();
    append(part.substr(cut));
    skipped -= cut;
  }
  if (size < kMethodWidth) fill(kMethodWidth - size);
}
