#include "util/native_file.h"

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <new>

namespace {

/// The runtime takes the size of a transfer as an unsigned int; larger ones go in pieces.
constexpr std::size_t kLargestTransfer = 1u << 30;

int openFile(std::string_view path, int flags) {
  return ::_sopen(nativePath(path).c_str(), flags | _O_NOINHERIT, _SH_DENYNO, _S_IREAD | _S_IWRITE);
}

/// Open for appending only: the system itself then puts each write behind the last, whoever wrote that. The
/// runtime would go to the end first and write then, and another process could write in between.
int openAppending(std::string_view path) {
  const HANDLE file =
      ::CreateFileA(nativePath(path).c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return -1;
  const int handle = ::_open_osfhandle(reinterpret_cast<std::intptr_t>(file), _O_WRONLY | _O_BINARY);
  if (handle < 0) ::CloseHandle(file);
  return handle;
}

bool writeAll(int handle, std::string_view text) {
  while (!text.empty()) {
    const auto size = static_cast<unsigned>(std::min(text.size(), kLargestTransfer));
    const int count = ::_write(handle, text.data(), size);
    if (count <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

/// Appends `text` with the system's line ends in one write, which no other process can part.
bool appendLines(int handle, std::string_view text) {
  constexpr std::size_t kUsualSize = 1024;
  char usual[kUsualSize];
  std::unique_ptr<char[]> largeP;
  const std::size_t size = NativeFile::appendedSize(text);
  if (size > kUsualSize) largeP.reset(new (std::nothrow) char[size]);
  if (size > kUsualSize && largeP == nullptr) return false;
  char* const startP = largeP != nullptr ? largeP.get() : usual;
  char* endP = startP;
  for (const char c : text) {
    if (c == '\n') *endP++ = '\r';
    *endP++ = c;
  }
  return writeAll(handle, {startP, size});
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
  mHandle = openAppending(path);
  mIsAppending = isOpen();
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
  mIsAppending = false;
}

std::size_t NativeFile::read(char* bufferP, std::size_t size) {
  const int count = ::_read(mHandle, bufferP, static_cast<unsigned>(std::min(size, kLargestTransfer)));
  return count > 0 ? static_cast<std::size_t>(count) : 0;
}

bool NativeFile::write(std::string_view text) {
  return mIsAppending ? appendLines(mHandle, text) : writeAll(mHandle, text);
}

std::size_t NativeFile::appendedSize(std::string_view text) {
  return text.size() + static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
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
