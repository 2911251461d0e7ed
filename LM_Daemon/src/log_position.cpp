#include "LM_Daemon/src/log_position.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace {

/// Answers where the copy ends. An empty text may have no address.
char* copy(char* targetP, std::string_view text) {
  if (!text.empty()) std::memcpy(targetP, text.data(), text.size());
  return targetP + text.size();
}

void writeFile(char* targetP, std::string_view fileName) {
  if (fileName.size() <= LogPosition::kFileWidth) {
    copy(targetP + LogPosition::kFileWidth - fileName.size(), fileName);
    return;
  }
  *targetP++ = '*';
  copy(targetP, fileName.substr(fileName.size() - (LogPosition::kFileWidth - 1)));
}

/// Answers where the column ends.
char* writeLine(char* targetP, int line) {
  char digits[LogPosition::kLongestLine];
  const char* const endP = std::to_chars(digits, digits + sizeof digits, line).ptr;
  const auto size = static_cast<std::size_t>(endP - digits);
  const std::size_t padding = LogPosition::kLineWidth - std::min(size, LogPosition::kLineWidth);
  return copy(targetP + padding, {digits, size});
}

void writeMethod(char* targetP, std::string_view className, std::string_view methodName) {
  static constexpr std::string_view kScope = "::";
  const std::size_t size = className.size() + kScope.size() + methodName.size();
  std::size_t skipped = 0;
  if (size > LogPosition::kMethodWidth) {
    *targetP++ = '*';
    skipped = size - (LogPosition::kMethodWidth - 1);
  }
  for (std::string_view part : {className, kScope, methodName}) {
    const std::size_t cut = std::min(skipped, part.size());
    part.remove_prefix(cut);
    skipped -= cut;
    targetP = copy(targetP, part);
  }
}

}  // namespace

std::size_t LogPosition::write(char* targetP, std::string_view fileName, int line, std::string_view className,
                               std::string_view methodName) {
  std::memset(targetP, ' ', kMaxSize);
  writeFile(targetP, fileName);
  char* endP = copy(targetP + kFileWidth, kGap);
  endP = copy(writeLine(endP, line), kGap);
  writeMethod(endP, className, methodName);
  return static_cast<std::size_t>(endP - targetP) + kMethodWidth;
}
