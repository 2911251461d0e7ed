/// A lock on a folder that one process at a time can hold. The system releases it when the process ends, also
/// when it crashes.
#ifndef WORKBENCH_FOLDER_LOCK_H
#define WORKBENCH_FOLDER_LOCK_H

#include <cstdint>
#include <filesystem>
#include <optional>

namespace workbench {

class FolderLock {
 public:
  /// None when another process holds it. Throws InputError when the folder cannot be opened.
  static std::optional<FolderLock> take(const std::filesystem::path& folder);
  ~FolderLock();
  FolderLock(FolderLock&& other) noexcept;
  FolderLock& operator=(FolderLock&& other) = delete;

 private:
  explicit FolderLock(std::intptr_t handle) : mHandle(handle) {}

  static constexpr std::intptr_t kNone = -1;
  std::intptr_t mHandle;
};

}  // namespace workbench

#endif
