/// The module's log of one run, also when the file holds earlier runs' entries, has another name than usual
/// or is rotated during the run. Main thread only.
#ifndef WORKBENCH_MODULE_LOG_H
#define WORKBENCH_MODULE_LOG_H

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace workbench {

/// The settings of the log, from the settings file.
struct LogSettings {
  std::string file = "autocad_addin_log.txt";
  bool isToFile = true;
  std::int64_t limit = 5000 * 1000;  ///< bytes at which the file is rotated
};

/// The values of section LOGGING; the module's defaults for what the text does not have.
LogSettings logSettings(std::string_view settingsFile);

/// The log's file. `folder` is the profile's folder "Lumetrapad".
std::filesystem::path logFile(const std::filesystem::path& folder, const LogSettings& settings);

/// Follows one log file while it is written.
class LogFollower {
 public:
  /// The file's present contents count as those of earlier runs.
  explicit LogFollower(std::filesystem::path file);

  /// Takes what has been written since the last look. To be called at least once for each rotation.
  void look();

  const std::filesystem::path& file() const { return mFile; }
  const std::string& text() const { return mText; }
  /// The text since the last call, for those who follow it for long.
  std::string take() { return std::exchange(mText, {}); }
  /// Whether the file was rotated more than once between two looks, so that entries are missing.
  bool hasGap() const { return mHasGap; }

 private:
  bool isContinuedBy(const std::filesystem::path& file) const;

  std::filesystem::path mFile;
  std::filesystem::path mBackup;
  std::uintmax_t mPosition = 0;  ///< up to here the file has been taken
  std::string mTail;             ///< the file's last bytes before that
  std::filesystem::file_time_type mBackupTime;
  std::string mText;
  bool mHasGap = false;
};

/// The log of a run in `settingsFolder`, the profile's folder "Lumetrapad".
class ModuleLog {
 public:
  /// To be made before the module is loaded.
  explicit ModuleLog(std::filesystem::path settingsFolder);

  /// To be called often while the module runs; looks as often as the log's limit asks for.
  void step();

  /// After the run.
  struct Result {
    std::string text;  ///< this run's entries, UTF-8
    std::string note;  ///< why there are none, or why some are missing; empty when all are there
  };
  Result finish();

 private:
  LogSettings settingsInForce() const;

  std::filesystem::path mFolder;
  std::vector<LogFollower> mFollowers;  ///< of the file that the settings name, and of the default
  std::uint32_t mStepsPerLook = 1;
  std::uint32_t mSteps = 0;
};

}  // namespace workbench

#endif
