/// The folder of a run's results. A run writes into `partial` in that folder; its results are put in place
/// together at its end, so the results of an earlier run stay complete until then. Main thread only.
#ifndef WORKBENCH_RESULT_FOLDER_H
#define WORKBENCH_RESULT_FOLDER_H

#include "workbench/platform/folder_lock.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace workbench {

class ResultFolder {
 public:
  /// Makes the folder with its parents and locks it. Throws InputError when that fails, and when another run
  /// is writing into it.
  explicit ResultFolder(const std::filesystem::path& folder);
  /// Unlocks the folder. `partial` is removed unless a run was under way, and with it the folders that were
  /// made for this run and are empty.
  ~ResultFolder();
  ResultFolder(const ResultFolder&) = delete;
  ResultFolder& operator=(const ResultFolder&) = delete;

  const std::filesystem::path& folder() const { return mFolder; }  ///< absolute
  /// Where the run writes: `partial` in the folder.
  std::filesystem::path partial() const { return mFolder / kPartial; }
  /// Empties `partial`. To be called once everything that the run reads has been read: the user may have
  /// named a file in there. Throws InputError.
  void begin();
  /// Marks the run as under way: from now on the contents of `partial` are kept.
  void keepPartial() { mIsPartialKept = true; }
  /// Moves `names`, paths in `partial`, to their places in the folder, then removes `partial`. All are moved
  /// or none: when one cannot be, those before it are moved back. Throws InputError.
  void putInPlace(const std::vector<std::filesystem::path>& names) const;

  static constexpr const char* kPartial = "partial";

 private:
  std::filesystem::path mFolder;             ///< absolute
  std::vector<std::filesystem::path> mMade;  ///< from the outermost to the folder itself
  std::optional<FolderLock> mLock;
  bool mIsPartialKept = true;
};

}  // namespace workbench

#endif
