#include "util/native_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>

namespace {

// Narrowed by the umask of the process.
constexpr mode_t kNewFileMode = 0666;

/// Windows does not open a folder as a file, so neither does this.
bool isFolder(int handle) {
  struct stat status = {};
  return ::fstat(handle, &status) == 0 && S_ISDIR(status.st_mode);
}

bool isFolder(const std::string& path) {
  struct stat status = {};
  // Not followed: renaming acts on the link itself, even if it leads to a folder.
  return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

int openFile(const SystemPath& path, int flags) {
  // Closed on exec: a program that the host starts must not keep the log open.
  const int handle = ::open(path.c_str(), flags | O_CLOEXEC, kNewFileMode);
  if (handle < 0 || !isFolder(handle)) return handle;
  ::close(handle);
  return -1;
}

FileChange changeResult(int result) {
  if (result == 0) return FileChange::kDone;
  // A missing file is no failure: there was nothing to move or remove.
  return errno == ENOENT ? FileChange::kMissing : FileChange::kFailed;
}

bool isSame(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

/// What a replacement of `path` has to rename over: not a symbolic link but the file that it leads to. Empty
/// when that is no regular file, or has no name any more.
std::string replaceable(const std::string& path) {
  struct stat status = {};
  // No file yet: the replacement creates it under the given name.
  if (::stat(path.c_str(), &status) != 0) return path;
  struct stat resolvedStatus = {};
  const std::unique_ptr<char, decltype(&std::free)> resolvedP(::realpath(path.c_str(), nullptr), &std::free);
  const std::string resolved = resolvedP != nullptr ? resolvedP.get() : "";
  // Compared by inode: a link under /proc may resolve to a text that names no file, or another
  // one.
  const bool isFound = ::stat(resolved.c_str(), &resolvedStatus) == 0 && isSame(status, resolvedStatus);
  return isFound && S_ISREG(status.st_mode) ? resolved : "";
}

bool writeAll(int handle, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = ::write(handle, text.data(), text.size());
    // A signal is no failure, and a short write goes on with the rest.
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

/// A new file, on the disk when this returns: a renaming that overtook the bytes would leave an empty file
/// after a power failure.
bool writeNewFile(const std::string& path, std::string_view text, mode_t mode) {
  const int handle = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, mode);
  if (handle < 0) return false;
  const bool isWritten = writeAll(handle, text) && ::fsync(handle) == 0;
  return ::close(handle) == 0 && isWritten;
}

}  // namespace

SystemPath systemPath(std::string_view path) {
  std::string result(path);
  // Only the separators: a drive letter stays, as part of a relative name.
  std::replace(result.begin(), result.end(), '\\', '/');
  return result;
}

bool NativeFile::openForReading(std::string_view path) {
  const SystemPath wanted = systemPath(path);
  close();
  mHandle = openFile(wanted, O_RDONLY);
  return isOpen();
}

bool NativeFile::openForAppending(std::string_view path) {
  SystemPath wanted = systemPath(path);
  close();
  mPath = std::move(wanted);
  mHandle = openFile(mPath, O_WRONLY | O_CREAT | O_APPEND);
  mIsAppending = isOpen();
  // O_APPEND moves the position only with the first write; position() is asked before.
  if (isOpen()) ::lseek(mHandle, 0, SEEK_END);
  return isOpen();
}

bool NativeFile::openForOverwriting(std::string_view path) {
  const SystemPath wanted = systemPath(path);
  close();
  // No O_CREAT and no O_TRUNC: the file must exist, and its tail stays.
  mHandle = openFile(wanted, O_RDWR);
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
  return writeAll(mHandle, text);
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

bool NativeFile::isNamed(const SystemPath& path) const {
  struct stat mine = {};
  struct stat named = {};
  return ::fstat(mHandle, &mine) == 0 && ::stat(path.c_str(), &named) == 0 && isSame(mine, named);
}

bool FileClaim::claim(std::string_view path) {
  release();
  const int handle = openFile(systemPath(path), O_RDONLY);
  if (handle < 0) return false;
  mHandle = handle;
  // An advisory lock of the open file and not of the process: it follows a rename and ends with the handle.
  if (::flock(handle, LOCK_EX | LOCK_NB) == 0) return true;
  release();
  return false;
}

void FileClaim::release() {
  if (mHandle >= 0) ::close(static_cast<int>(mHandle));
  mHandle = -1;
}

bool replaceFile(std::string_view path, std::string_view text) {
  const std::string target = replaceable(systemPath(path));
  if (target.empty()) return false;
  struct stat status = {};
  const bool isThere = ::stat(target.c_str(), &status) == 0;
  // Each process has a name of its own: two hosts may end at the same moment.
  const std::string beside = target + "." + std::to_string(::getpid()) + ".new";
  // The new file keeps the permissions that the user has given the old one.
  const mode_t mode = isThere ? status.st_mode & 07777 : kNewFileMode;
  if (writeNewFile(beside, text, mode) && ::rename(beside.c_str(), target.c_str()) == 0) return true;
  // Nothing is left beside the old file after a failure.
  ::unlink(beside.c_str());
  return false;
}

FileChange removeFile(std::string_view path) {
  return changeResult(::unlink(systemPath(path).c_str()));
}

FileChange renameFile(std::string_view from, std::string_view to) {
  const std::string source = systemPath(from);
  if (isFolder(source)) return FileChange::kFailed;
  return changeResult(::rename(source.c_str(), systemPath(to).c_str()));
}
