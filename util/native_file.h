/// The one place where the module meets the file system. Paths are in Windows syntax; the native build turns
/// them into its own at the moment of opening and nowhere else. No file is opened in a way that keeps other
/// processes from reading or writing it. Nothing here throws for a file problem.
/// One thread at a time for each file.
#ifndef UTIL_NATIVE_FILE_H
#define UTIL_NATIVE_FILE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// The path as the system below wants it: backslashes become slashes on the native build, and stay as they
/// are on Windows.
std::string nativePath(std::string_view path);

/// An unbuffered file.
class NativeFile {
 public:
  NativeFile() = default;
  ~NativeFile() { close(); }
  NativeFile(const NativeFile&) = delete;
  NativeFile& operator=(const NativeFile&) = delete;

  /// Each opens the file of `path` after closing the one that was open; false when that fails, a folder
  /// included. Reading is binary. Writing ends lines in the system's own manner.
  bool openForReading(std::string_view path);
  /// Every write lands behind what any process has written before; the file is created when it is missing.
  /// The position is the end of the file at first.
  bool openForAppending(std::string_view path);
  /// The file is created when it is missing, and emptied when it is there.
  bool openForReplacing(std::string_view path);
  /// Writing starts at the first byte of a file that must exist; what is not overwritten stays.
  bool openForOverwriting(std::string_view path);

  bool isOpen() const { return mHandle >= 0; }
  void close();

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
};

/// Result of removing or renaming a file.
enum class FileChange { kDone, kMissing, kFailed };

/// Removes a file, never a folder.
FileChange removeFile(std::string_view path);

/// Gives the file `from` the name `to`.
FileChange renameFile(std::string_view from, std::string_view to);

#endif
