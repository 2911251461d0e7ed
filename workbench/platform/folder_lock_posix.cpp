#include "workbench/input_error.h"
#include "workbench/platform/folder_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace workbench {

std::optional<FolderLock> FolderLock::take(const std::filesystem::path& folder) {
  // The folder itself is locked: a lock file would be one more file among the results.
  const int handle = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0)
    throw InputError({folder.string()}, "a folder that can be opened",
                     std::generic_category().message(errno));
  // flock and not fcntl: its lock belongs to the open file and so also excludes a second run in the same
  // process.
  if (flock(handle, LOCK_EX | LOCK_NB) == 0) return FolderLock(handle);
  close(handle);
  return std::nullopt;
}

FolderLock::~FolderLock() {
  // Closing releases the lock. O_CLOEXEC keeps programs started by the run from holding on to it.
  if (mHandle != kNone) close(static_cast<int>(mHandle));
}

FolderLock::FolderLock(FolderLock&& other) noexcept : mHandle(std::exchange(other.mHandle, kNone)) {}

}  // namespace workbench
