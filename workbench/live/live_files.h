/// The files that a live session leaves: its session file, and reports that are made of it by replaying it in
/// a process of its own. Main thread only.
#ifndef WORKBENCH_LIVE_FILES_H
#define WORKBENCH_LIVE_FILES_H

#include "workbench/options.h"

#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace workbench {

class LiveFiles {
 public:
  /// Names are made of the time at which the session began. Makes the folder. The options' paths are
  /// absolute. Throws InputError.
  explicit LiveFiles(const LiveOptions& options);
  /// Ends a report that is still being made.
  ~LiveFiles();
  LiveFiles(const LiveFiles&) = delete;
  LiveFiles& operator=(const LiveFiles&) = delete;

  /// Where the module runs, with its profile in it unless the user has named one.
  const std::filesystem::path& runFolder() const { return mRunFolder; }
  /// Keeps the settings that the session begins with, for the replay. To be called before the module is
  /// loaded.
  void keepSettings(const std::filesystem::path& settingsFile);

  /// Writes the session and the profile it begins with, in place of those saved before. Returns its file.
  /// Throws InputError.
  std::filesystem::path save(const std::string& events);

  /// Saves the session and begins to make the report of it. Throws InputError.
  void startReport(const std::string& events);
  struct Report {
    bool isMade = false;
    std::string text;  ///< its file, or why there is none
  };
  /// Once for each report, when it is done.
  std::optional<Report> finishedReport();

 private:
  std::vector<std::string> replayArguments(const std::filesystem::path& session) const;
  std::filesystem::path reportFolder() const { return mOut / (mName + ".report"); }

  LiveOptions mOptions;
  std::filesystem::path mOut;
  std::string mName;
  std::filesystem::path mRunFolder;
  std::optional<std::string> mSettings;  ///< text of the settings file at the beginning
  pid_t mReporter = 0;
};

}  // namespace workbench

#endif
