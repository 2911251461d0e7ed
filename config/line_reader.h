/// Reads the lines of a file as a text stream does: a line ends at a line feed, and a carriage
/// return right before it belongs to the line end. One thread at a time.
#ifndef CONFIG_LINE_READER_H
#define CONFIG_LINE_READER_H

#include "util/native_file.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

class LineReader {
 public:
  /// Opens the file (Windows syntax), shared for reading and writing, and goes to its first line; false
  /// when it cannot be opened.
  bool open(const std::string& path);
  void close() { mFile.close(); }

  /// Goes back to the first line.
  void rewind();

  /// Whether a line ended at the end of the file instead of at a line feed; there is nothing more to read
  /// then.
  bool isAtEnd() const { return mIsAtEnd; }

  /// The next line without its end; empty at the end of the file. Valid until the next call. A line that
  /// does not fit in memory ends the file.
  std::string_view next();

 private:
  std::string_view take(std::size_t size, std::size_t endSize);
  bool fill();
  bool makeRoom();

  NativeFile mFile;
  std::unique_ptr<char[]> mBufferP;
  std::size_t mCapacity = 0;
  std::size_t mBegin = 0;
  std::size_t mEnd = 0;
  bool mIsAtEnd = false;
};

#endif
