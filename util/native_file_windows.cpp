#include "util/native_file.h"

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace {

/// The runtime takes the size of a transfer as an unsigned int; larger ones go in pieces.
constexpr std::size_t kLargestTransfer = 1u << 30;

int openFile(std::string_view path, int flags) {
  return ::_sopen(nativePath(path).c_str(), flags | _O_NOINHERIT, _SH_DENYNO, _S_IREAD | _S_IWRITE);
}

FileChange changeResult(int result) {
  if (result == 0) return FileChange::kDone;
  return errno == ENOENT ? FileChange::kMissing : FileChange::kFailed;
}

}  // namespace

std::string nativePath(std::string_view path) {
  return std::string(path);
}

bool NativeFile::openForReading(std::string_view path) {
  close();
  mHandle = openFile(path, _O_RDONLY | _O_BINARY);
  return isOpen();
}

bool NativeFile::openForAppending(std::string_view path) {
  close();
  mHandle = openFile(path, _O_WRONLY | _O_CREAT | _O_APPEND | _O_TEXT);
  if (isOpen()) ::_lseeki64(mHandle, 0, SEEK_END);
  return isOpen();
}

bool NativeFile::openForReplacing(std::string_view path) {
  close();
  mHandle = openFile(path, _O_WRONLY | _O_CREAT | _O_TRUNC | _O_TEXT);
  return isOpen();
}

bool NativeFile::openForOverwriting(std::string_view path) {
  close();
  mHandle = openFile(path, _O_RDWR | _O_TEXT);
  return isOpen();
}

void NativeFile::close() {
  if (isOpen()) ::_close(mHandle);
  mHandle = -1;
}

std::size_t NativeFile::read(char* bufferP, std::size_t size) {
  const int count = ::_read(mHandle, bufferP, static_cast<unsigned>(std::min(size, kLargestTransfer)));
  return count > 0 ? static_cast<std::size_t>(count) : 0;
}

bool NativeFile::write(std::string_view text) {
  while (!text.empty()) {
    const auto size = static_cast<unsigned>(std::min(text.size(), kLargestTransfer));
    const int count = ::_write(mHandle, text.data(), size);
    if (count <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

void NativeFile::rewind() {
  ::_lseeki64(mHandle, 0, SEEK_SET);
}

std::int64_t NativeFile::position() {
  return ::_lseeki64(mHandle, 0, SEEK_CUR);
}

FileChange removeFile(std::string_view path) {
  return changeResult(::_unlink(nativePath(path).c_str()));
}

FileChange renameFile(std::string_view from, std::string_view to) {
  return changeResult(std::rename(nativePath(from).c_str(), nativePath(to).c_str()));
}
