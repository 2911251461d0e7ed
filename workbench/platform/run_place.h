/// Where the module runs: its profile folder and its own file, under names that are the same for every run.
/// On Linux the names are relative, so no path of the machine gets into the log or the command line. Main
/// thread, while no other thread runs.
#ifndef WORKBENCH_RUN_PLACE_H
#define WORKBENCH_RUN_PLACE_H

#include <filesystem>

namespace workbench {

class RunPlace {
 public:
  /// Makes `profile` the user's profile folder (USERPROFILE). Linux: `folder` becomes the current folder,
  /// with links in it to what is elsewhere. Throws InputError.
  RunPlace(const std::filesystem::path& folder, const std::filesystem::path& profile,
           const std::filesystem::path& module);
  /// Restores the current folder and removes the links.
  ~RunPlace();
  RunPlace(const RunPlace&) = delete;
  RunPlace& operator=(const RunPlace&) = delete;

  /// The name by which to load the module.
  const std::filesystem::path& module() const { return mModule; }

 private:
  std::filesystem::path mFolder;
  std::filesystem::path mBefore;
  std::filesystem::path mModule;
};

}  // namespace workbench

#endif
