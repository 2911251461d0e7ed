#include "util/native_file.h"
#include "util/wide_text.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>

namespace {

/// The runtime takes the size of a transfer as an unsigned int; larger ones go in pieces.
constexpr std::size_t kLargestTransfer = 1u << 30;

// FILE_SHARE_DELETE lets other processes rename and remove the file while it is open.
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// Waits between two attempts at a file that another process is using right now.
constexpr DWORD kAttemptMs = 10;
// At most 40 ms of waiting for a reader, about 1 s for a replacement.
constexpr int kReadingAttempts = 5;
constexpr int kReplacingAttempts = 100;

HANDLE openHandle(const std::wstring& path, DWORD access, DWORD creation) {
  return ::CreateFileW(path.c_str(), access, kShareAll, nullptr, creation, FILE_ATTRIBUTE_NORMAL, nullptr);
}

/// What another process's replacing, renaming or scanning of a file causes for a moment.
bool isMomentary(DWORD error) {
  return error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED;
}

bool isFolder(const std::wstring& path) {
  const DWORD attributes = ::GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// A handle of the runtime for that of the system; -1 when there is none.
int runtimeHandle(HANDLE file, int flags) {
  if (file == INVALID_HANDLE_VALUE) return -1;
  const int handle = ::_open_osfhandle(reinterpret_cast<std::intptr_t>(file), flags);
  // On success the runtime owns the handle and closes it.
  if (handle < 0) ::CloseHandle(file);
  return handle;
}

HANDLE systemHandle(int handle) {
  return handle < 0 ? INVALID_HANDLE_VALUE : reinterpret_cast<HANDLE>(::_get_osfhandle(handle));
}

/// A file that is being replaced cannot be opened for a moment; to a reader it must not seem missing.
HANDLE openToRead(const std::wstring& path) {
  HANDLE file = openHandle(path, GENERIC_READ, OPEN_EXISTING);
  for (int attempt = 1; attempt < kReadingAttempts && file == INVALID_HANDLE_VALUE; ++attempt) {
    // A folder is denied for good, with the same error.
    if (!isMomentary(::GetLastError()) || isFolder(path)) return file;
    ::Sleep(kAttemptMs);
    file = openHandle(path, GENERIC_READ, OPEN_EXISTING);
  }
  return file;
}

bool identify(HANDLE file, BY_HANDLE_FILE_INFORMATION& information) {
  return file != INVALID_HANDLE_VALUE && ::GetFileInformationByHandle(file, &information) != 0;
}

bool isSame(const BY_HANDLE_FILE_INFORMATION& a, const BY_HANDLE_FILE_INFORMATION& b) {
  // The names may differ in case, short form or drive mapping; volume and index do not.
  return a.dwVolumeSerialNumber == b.dwVolumeSerialNumber && a.nFileIndexHigh == b.nFileIndexHigh &&
         a.nFileIndexLow == b.nFileIndexLow;
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

/// Copies `text` to `targetP` with the system's line ends.
std::string_view withLineEnds(std::string_view text, char* targetP) {
  char* endP = targetP;
  for (const char c : text) {
    // A CR already before the line feed stays: the text mode of the runtime does the same.
    if (c == '\n') *endP++ = '\r';
    *endP++ = c;
  }
  return {targetP, static_cast<std::size_t>(endP - targetP)};
}

/// Appends `text` with the system's line ends in one write, which no other process can part.
bool appendLines(int handle, std::string_view text) {
  constexpr std::size_t kUsualSize = 1024;
  // Usual lines go through the stack, so that logging allocates nothing.
  char usual[kUsualSize];
  std::unique_ptr<char[]> largeP;
  const std::size_t size = NativeFile::appendedSize(text);
  if (size > kUsualSize) largeP.reset(new (std::nothrow) char[size]);
  if (size > kUsualSize && largeP == nullptr) return false;
  return writeAll(handle, withLineEnds(text, largeP != nullptr ? largeP.get() : usual));
}

/// A new file, on the disk when this returns.
bool writeNewFile(const std::wstring& path, std::string_view text) {
  const int handle = runtimeHandle(openHandle(path, GENERIC_WRITE, CREATE_ALWAYS), _O_WRONLY | _O_BINARY);
  if (handle < 0) return false;
  const bool isWritten = appendLines(handle, text) && ::FlushFileBuffers(systemHandle(handle)) != 0;
  return ::_close(handle) == 0 && isWritten;
}

/// Moves the file `from` into the place of `to`, as soon as no other process forbids it.
bool moveInPlace(const std::wstring& from, const std::wstring& to) {
  for (int attempt = 1;; ++attempt) {
    // Written through, so that the new name is on the disk when this returns.
    if (::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0)
      return true;
    // An editor, an indexer or a virus scanner may hold the target for a moment.
    if (attempt == kReplacingAttempts || !isMomentary(::GetLastError())) return false;
    ::Sleep(kAttemptMs);
  }
}

FileChange changeResult(BOOL isDone) {
  if (isDone) return FileChange::kDone;
  const DWORD error = ::GetLastError();
  const bool isMissing = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
  return isMissing ? FileChange::kMissing : FileChange::kFailed;
}

}  // namespace

/// The profile's folder may have a name that the ANSI code page lacks, and its narrow text is only similar
/// then. The environment has the true name.
SystemPath systemPath(std::string_view path) {
  const std::wstring profile = environmentValue(L"USERPROFILE");
  const std::string narrow = toAnsi(profile);
  if (narrow.empty() || path.substr(0, narrow.size()) != narrow) return fromAnsi(path);
  return profile + fromAnsi(path.substr(narrow.size()));
}

bool NativeFile::openForReading(std::string_view path) {
  const SystemPath wanted = systemPath(path);
  close();
  mHandle = runtimeHandle(openToRead(wanted), _O_RDONLY | _O_BINARY);
  return isOpen();
}

/// Open for appending only: the system itself then puts each write after the last, whoever wrote that. The
/// runtime would go to the end first and write then, and another process could write in between.
bool NativeFile::openForAppending(std::string_view path) {
  SystemPath wanted = systemPath(path);
  close();
  mPath = std::move(wanted);
  mHandle = runtimeHandle(openHandle(mPath, FILE_APPEND_DATA, OPEN_ALWAYS), _O_WRONLY | _O_BINARY);
  mIsAppending = isOpen();
  if (isOpen()) ::_lseeki64(mHandle, 0, SEEK_END);
  return isOpen();
}

bool NativeFile::openForOverwriting(std::string_view path) {
  const SystemPath wanted = systemPath(path);
  close();
  // Text mode, so that write() ends lines in CR LF. Appending converts by itself, because it needs one write
  // a line.
  mHandle = runtimeHandle(openHandle(wanted, GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING), _O_RDWR | _O_TEXT);
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

bool NativeFile::isNamed(const SystemPath& path) const {
  BY_HANDLE_FILE_INFORMATION mine = {};
  BY_HANDLE_FILE_INFORMATION named = {};
  // Access 0 asks for the attributes only.
  const HANDLE other = openHandle(path, 0, OPEN_EXISTING);
  const bool isMine = identify(systemHandle(mHandle), mine) && identify(other, named) && isSame(mine, named);
  if (other != INVALID_HANDLE_VALUE) ::CloseHandle(other);
  return isMine;
}

bool FileClaim::claim(std::string_view path) {
  release();
  const HANDLE file = openHandle(systemPath(path), GENERIC_READ, OPEN_EXISTING);
  if (file == INVALID_HANDLE_VALUE) return false;
  mHandle = reinterpret_cast<std::intptr_t>(file);
  // A byte far beyond the end of any log: a claimed byte can be neither read nor written by others.
  OVERLAPPED place = {};
  place.OffsetHigh = 0x40000000;
  if (::LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place) != 0)
    return true;
  release();
  return false;
}

void FileClaim::release() {
  if (mHandle != -1) ::CloseHandle(reinterpret_cast<HANDLE>(mHandle));
  mHandle = -1;
}

bool replaceFile(std::string_view path, std::string_view text) {
  const std::wstring target = systemPath(path);
  if (isFolder(target)) return false;
  // Each process has a name of its own: two hosts may end at the same moment.
  const std::wstring beside = target + L"." + std::to_wstring(::GetCurrentProcessId()) + L".new";
  if (writeNewFile(beside, text) && moveInPlace(beside, target)) return true;
  ::DeleteFileW(beside.c_str());
  return false;
}

FileChange removeFile(std::string_view path) {
  return changeResult(::DeleteFileW(systemPath(path).c_str()));
}

FileChange renameFile(std::string_view from, std::string_view to) {
  const std::wstring source = systemPath(from);
  // MoveFileEx would rename a folder.
  if (isFolder(source)) return FileChange::kFailed;
  // Without MOVEFILE_REPLACE_EXISTING: the name must be free.
  return changeResult(::MoveFileExW(source.c_str(), systemPath(to).c_str(), 0));
}
