#include "workbench/input_error.h"
#include "workbench/platform/folder_lock.h"

#include <windows.h>

#include <system_error>
#include <utility>

namespace workbench {

namespace {

constexpr DWORD kAttemptMs = 20;
constexpr int kAttempts = 10;

HANDLE openAlone(const std::filesystem::path& file) {
  return CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                     FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
}

}  // namespace

std::optional<FolderLock> FolderLock::take(const std::filesystem::path& folder) {
  // Windows has no lock on a folder: a file that nobody else may open, gone when its handle is closed.
  const std::filesystem::path file = folder / ".lock";
  HANDLE handle = openAlone(file);
  // Access is denied for a moment while the file of a run that has just ended waits for its deletion, and for
  // good in a folder without the right to write.
  for (int attempt = 1; attempt < kAttempts && handle == INVALID_HANDLE_VALUE; ++attempt) {
    if (GetLastError() != ERROR_ACCESS_DENIED) break;
    Sleep(kAttemptMs);
    handle = openAlone(file);
  }
  if (handle != INVALID_HANDLE_VALUE) return FolderLock(reinterpret_cast<std::intptr_t>(handle));
  const DWORD error = GetLastError();
  if (error == ERROR_SHARING_VIOLATION) return std::nullopt;
  throw InputError({folder.string()}, "a folder that can be written",
                   std::system_category().message(static_cast<int>(error)));
}

FolderLock::~FolderLock() {
  // Closing deletes the file. The system does so when the process crashes, too.
  if (mHandle != kNone) CloseHandle(reinterpret_cast<HANDLE>(mHandle));
}

FolderLock::FolderLock(FolderLock&& other) noexcept : mHandle(std::exchange(other.mHandle, kNone)) {}

}  // namespace workbench
