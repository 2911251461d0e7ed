#include "workbench/input_error.h"
#include "workbench/platform/folder_lock.h"

#include <windows.h>

#include <system_error>
#include <utility>

namespace workbench {

std::optional<FolderLock> FolderLock::take(const std::filesystem::path& folder) {
  // Windows has no lock on a folder: a file that nobody else may open, gone when its handle is closed.
  const std::filesystem::path file = folder / ".lock";
  const HANDLE handle = CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (handle != INVALID_HANDLE_VALUE) return FolderLock(reinterpret_cast<std::intptr_t>(handle));
  const DWORD error = GetLastError();
  // Access is denied, too, while the file of a run that has just ended waits for its deletion.
  if (error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED) return std::nullopt;
  throw InputError({folder.string()}, "a folder that can be written",
                   std::system_category().message(static_cast<int>(error)));
}

FolderLock::~FolderLock() {
  // Closing deletes the file. The system does so when the process crashes, too.
  if (mHandle != kNone) CloseHandle(reinterpret_cast<HANDLE>(mHandle));
}

FolderLock::FolderLock(FolderLock&& other) noexcept : mHandle(std::exchange(other.mHandle, kNone)) {}

}  // namespace workbench
