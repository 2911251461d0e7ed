#include "workbench/live/live_log.h"

#include "workbench/text_input.h"

namespace workbench {
namespace {

constexpr std::size_t kMostEndBytes = 64 * 1024;

}  // namespace

void LiveLog::follow(const std::filesystem::path& folder, const std::string& settings) {
  const LogSettings log = logSettings(settings);
  if (!log.isToFile) return mFollower.reset();
  const std::filesystem::path file = logFile(folder, log);
  // The same file goes on, so nothing of it is lost between two loads of the module.
  if (!mFollower || mFollower->file() != file) mFollower.emplace(file);
}

std::string LiveLog::take() {
  if (!mFollower) return {};
  mFollower->look();
  const std::string text = toUtf8(mFollower->take());
  mEnd += text;
  if (mEnd.size() > kMostEndBytes) {
    const std::size_t line = mEnd.find('\n', mEnd.size() - kMostEndBytes);
    mEnd.erase(0, line == std::string::npos ? mEnd.size() - kMostEndBytes : line + 1);
  }
  return text;
}

}  // namespace workbench
