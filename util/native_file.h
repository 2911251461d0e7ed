/// The one place where the module meets the file system. Paths are in Windows syntax; the native build turns
/// them into its own at the moment of opening and nowhere else. No file is opened in a way that keeps other
/// processes from reading, writing, renaming or removing it. Nothing here throws for a file problem,
/// only std::bad_alloc.
/// One thread at a time for each file.
#ifndef UTIL_NATIVE_FILE_H
#define UTIL_NATIVE_FILE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// A path as the system's own operations take it: wide on Windows, whose names may hold characters that the
/// ANSI code page does not have; in slashes on the native build.
#ifdef _WIN32
using SystemPath = std::wstring;
#else
using SystemPath = std::string;
#endif
SystemPath systemPath(std::string_view path);

/// An unbuffered file.
class NativeFile {
 public:
  NativeFile() = default;
  ~NativeFile() { close(); }
  NativeFile(const NativeFile&) = delete;
  NativeFile& operator=(const NativeFile&) = delete;

  /// Each closes the file that was open and opens that of `path`; false when that fails, as it does for a
  /// folder. Without memory each throws, and the file that was open stays open. Reading is binary. Writing
  /// ends lines in the system's own manner.
  bool openForReading(std::string_view path);
  /// Every write lands after what any process has written before; the file is created when it is missing.
  /// The position is the end of the file at first.
  bool openForAppending(std::string_view path);
  /// Writing starts at the first byte of a file that must exist; what is not overwritten stays.
  bool openForOverwriting(std::string_view path);

  bool isOpen() const { return mHandle >= 0; }
  void close();

  /// Whether the file that is open for appending still has the name that it was opened by. Another process
  /// may have renamed or replaced it. Allocates nothing.
  bool hasItsName() const { return isNamed(mPath); }
  /// Whether the open file is the one that `path` names now.
  bool isNamed(const SystemPath& path) const;

  /// Reads up to `size` bytes; 0 at the end of the file and when reading fails.
  std::size_t read(char* bufferP, std::size_t size);
  /// True when all of `text` was written. In appending mode it is written in one piece.
  bool write(std::string_view text);
  /// Bytes that `text` takes in a file that is open for appending.
  static std::size_t appendedSize(std::string_view text);
  /// The next read begins at the first byte.
  void rewind();
  /// Position of the next byte in bytes; after a write in appending mode the end of what was written.
  /// -1 when there is none.
  std::int64_t position();

 private:
  int mHandle = -1;
  bool mIsAppending = false;
  SystemPath mPath;  ///< of a file that is open for appending
};

/// Claims a file among the processes that ask for it this way; reading and writing go on. The system ends the
/// claim of a process that ends.
class FileClaim {
 public:
  FileClaim() = default;
  ~FileClaim() { release(); }
  FileClaim(const FileClaim&) = delete;
  FileClaim& operator=(const FileClaim&) = delete;

  /// Never waits: false when another process has claimed the file that `path` names, or there is none.
  bool claim(std::string_view path);
  /// Ends the claim. Until then the claim moves with the file when that is renamed.
  void release();

 private:
  std::intptr_t mHandle = -1;
};

/// Puts a file with `text`, its lines ended in the system's own manner, in the place of the file `path`. At
/// every moment, also when this process is ended, `path` names the old file or the new one, whole. False when
/// that is not possible; the old file, or none, is there then. Only a regular file is replaced. Windows
/// replaces no file while another process has it open; this waits for that, 1 s at most.
bool replaceFile(std::string_view path, std::string_view text);

/// Result of removing or renaming a file.
enum class FileChange { kDone, kMissing, kFailed };

/// Removes a file, never a folder.
FileChange removeFile(std::string_view path);

/// Gives the file `from` the name `to`, which must be free on Windows. Never renames a folder.
FileChange renameFile(std::string_view from, std::string_view to);

#endif
