/// The module's log as it is written, and its end for pages that come later. Main thread only.
#ifndef WORKBENCH_LIVE_LOG_H
#define WORKBENCH_LIVE_LOG_H

#include "workbench/running/module_log.h"

#include <filesystem>
#include <optional>
#include <string>

namespace workbench {

class LiveLog {
 public:
  /// Follows the log that the settings file names, from now on.
  void follow(const std::filesystem::path& folder, const std::string& settings);
  /// What has been written since the last call, UTF-8.
  std::string take();
  /// The last entries taken.
  const std::string& end() const { return mEnd; }

 private:
  std::optional<LogFollower> mFollower;
  std::string mEnd;
};

}  // namespace workbench

#endif
