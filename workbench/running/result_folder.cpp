#include "workbench/running/result_folder.h"

#include "workbench/input_error.h"

#include <system_error>
#include <utility>

namespace workbench {
namespace {

namespace fs = std::filesystem;

constexpr const char* kReplaced = ".replaced";  // in `partial`: earlier results on their way out

/// Folders that have to be made for `folder` to be there, from the outermost.
std::vector<fs::path> missingFolders(const fs::path& folder) {
  std::vector<fs::path> missing;
  // Outermost first. The path is absolute, so the loop ends at the root, which exists.
  for (fs::path at = folder; !at.empty() && !fs::exists(at); at = at.parent_path())
    missing.insert(missing.begin(), at);
  return missing;
}

void makeFolders(const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) throw InputError({folder.string()}, "a folder that can be made", error.message());
}

std::optional<FolderLock> makeAndLock(const fs::path& folder) {
  makeFolders(folder);
  return FolderLock::take(folder);
}

/// Moves one by one; what has been moved is moved back unless all of it is kept.
class Moves {
 public:
  Moves() = default;
  ~Moves() {
    std::error_code ignored;
    // In reverse: an earlier result can only return to its place when the new one has left it.
    for (; !mDone.empty(); mDone.pop_back()) fs::rename(mDone.back().second, mDone.back().first, ignored);
  }
  Moves(const Moves&) = delete;
  Moves& operator=(const Moves&) = delete;

  void move(const fs::path& from, const fs::path& to) {
    makeFolders(to.parent_path());
    std::error_code error;
    // Within one folder and so on one file system, where a rename is a single step and cannot end half done.
    fs::rename(from, to, error);
    if (error) throw InputError({to.string()}, "a result that can be put in place", error.message());
    mDone.emplace_back(from, to);
  }
  void keep() { mDone.clear(); }

 private:
  std::vector<std::pair<fs::path, fs::path>> mDone;
};

}  // namespace

ResultFolder::ResultFolder(const fs::path& folder)
    : mFolder(fs::absolute(folder).lexically_normal()),
      mMade(missingFolders(mFolder)),
      mLock(makeAndLock(mFolder)) {
  if (!mLock)
    throw InputError({folder.string()}, "a folder for the results",
                     "one that another run is writing into; wait for its end, or name another folder");
}

ResultFolder::~ResultFolder() {
  std::error_code ignored;
  if (!mIsPartialKept) fs::remove_all(partial(), ignored);
  // First the lock: on Windows it is a file in the folder, which would not be empty.
  mLock.reset();
  // remove() leaves a folder that holds anything.
  for (auto folder = mMade.rbegin(); folder != mMade.rend(); ++folder) fs::remove(*folder, ignored);
}

void ResultFolder::begin() {
  mIsPartialKept = false;
  std::error_code error;
  // What an interrupted run has left there is replaced by this one.
  fs::remove_all(partial(), error);
  if (error) throw InputError({partial().string()}, "a folder that can be removed", error.message());
  makeFolders(partial());
}

void ResultFolder::putInPlace(const std::vector<fs::path>& names) const {
  {
    Moves moves;
    for (const fs::path& name : names) {
      // The status of the link itself: one that leads nowhere takes up the name, too.
      if (fs::exists(fs::symlink_status(mFolder / name)))
        moves.move(mFolder / name, partial() / kReplaced / name);
      moves.move(partial() / name, mFolder / name);
    }
    // From here on the results are in place, and a failure to clean up does not matter.
    moves.keep();
  }
  std::error_code ignored;
  fs::remove_all(partial(), ignored);
}

}  // namespace workbench
