#include "util/native_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace {

constexpr mode_t kNewFileMode = 0666;

/// Windows does not open a folder as a file, so neither does this.
bool isFolder(int handle) {
  struct stat status = {};
  return ::fstat(handle, &status) == 0 && S_ISDIR(status.st_mode);
}

int openFile(std::string_view path, int flags) {
  const int handle = ::open(nativePath(path).c_str(), flags | O_CLOEXEC, kNewFileMode);
  if (handle < 0 || !isFolder(handle)) return handle;
  ::close(handle);
  return -1;
}

FileChange changeResult(int result) {
  if (result == 0) return FileChange::kDone;
  return errno == ENOENT ? FileChange::kMissing : FileChange::kFailed;
}

}  // namespace

std::string nativePath(std::string_view path) {
  std::string result(path);
  std::replace(result.begin(), result.end(), '\\', '/');
  return result;
}

bool NativeFile::openForReading(std::string_view path) {
  close();
  mHandle = openFile(path, O_RDONLY);
  return isOpen();
}

bool NativeFile::openForAppending(std::string_view path) {
  close();
  mHandle = openFile(path, O_WRONLY | O_CREAT | O_APPEND);
  mIsAppending = isOpen();
  if (isOpen()) ::lseek(mHandle, 0, SEEK_END);
  return isOpen();
}

bool NativeFile::openForReplacing(std::string_view path) {
  close();
  mHandle = openFile(path, O_WRONLY | O_CREAT | O_TRUNC);
  return isOpen();
}

bool NativeFile::openForOverwriting(std::string_view path) {
  close();
  mHandle = openFile(path, O_RDWR);
  return isOpen();
}

void NativeFile::close() {
  if (isOpen()) ::close(mHandle);
  mHandle = -1;
  mIsAppending = false;
}

std::size_t NativeFile::read(char* bufferP, std::size_t size) {
  ssize_t count = 0;
  do {
    count = ::read(mHandle, bufferP, size);
  } while (count < 0 && errno == EINTR);
  return count > 0 ? static_cast<std::size_t>(count) : 0;
}

bool NativeFile::write(std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = ::write(mHandle, text.data(), text.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

std::size_t NativeFile::appendedSize(std::string_view text) {
  return text.size();
}

void NativeFile::rewind() {
  ::lseek(mHandle, 0, SEEK_SET);
}

std::int64_t NativeFile::position() {
  return ::lseek(mHandle, 0, SEEK_CUR);
}

FileChange removeFile(std::string_view path) {
  return changeResult(::unlink(nativePath(path).c_str()));
}

FileChange renameFile(std::string_view from, std::string_view to) {
  return changeResult(::rename(nativePath(from).c_str(), nativePath(to).c_str()));
}
