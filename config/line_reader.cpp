#include "config/line_reader.h"

#include <cstring>
#include <new>
#include <utility>

namespace {
// Holds a whole settings file, so that it is usually read by one call.
constexpr std::size_t kUsualCapacity = std::size_t{64} * 1024;
}  // namespace

bool LineReader::open(const std::string& path) {
  mBegin = mEnd = 0;
  mIsAtEnd = false;
  return mFile.openForReading(path);
}

void LineReader::rewind() {
  // The buffer is dropped too: another process may have changed the file since it was read.
  if (mFile.isOpen()) mFile.rewind();
  mBegin = mEnd = 0;
  mIsAtEnd = false;
}

std::string_view LineReader::next() {
  std::size_t searched = 0;
  while (true) {
    const std::size_t size = mEnd - mBegin;
    const char* const startP = mBufferP.get() + mBegin;
    const void* const feedP =
        size > searched ? std::memchr(startP + searched, '\n', size - searched) : nullptr;
    if (feedP != nullptr) return take(static_cast<std::size_t>(static_cast<const char*>(feedP) - startP), 1);
    // What has been searched holds no line feed: a long line is not scanned again from its start.
    searched = size;
    if (!fill()) {
      // Set together with the last line, not after it: a file that ends in a line feed has one more, empty
      // line.
      mIsAtEnd = true;
      return take(mEnd - mBegin, 0);
    }
  }
}

std::string_view LineReader::take(std::size_t size, std::size_t endSize) {
  std::string_view line(mBufferP.get() + mBegin, size);
  mBegin += size + endSize;
  // At the end of the file a CR is part of the line, as in a text stream.
  if (endSize != 0 && !line.empty() && line.back() == '\r') line.remove_suffix(1);
  return line;
}

/// Appends more of the file to the buffer; false at the end of the file.
bool LineReader::fill() {
  if (!mFile.isOpen() || !makeRoom()) return false;
  const std::size_t count = mFile.read(mBufferP.get() + mEnd, mCapacity - mEnd);
  mEnd += count;
  return count > 0;
}

bool LineReader::makeRoom() {
  if (mBegin > 0) {
    // Invalidates the view that the last next() returned, as the header says.
    std::memmove(mBufferP.get(), mBufferP.get() + mBegin, mEnd - mBegin);
    mEnd -= mBegin;
    mBegin = 0;
  }
  if (mEnd < mCapacity) return true;
  const std::size_t capacity = mCapacity == 0 ? kUsualCapacity : 2 * mCapacity;
  std::unique_ptr<char[]> bufferP(new (std::nothrow) char[capacity]);
  if (bufferP == nullptr) return false;
  if (mEnd > 0) std::memcpy(bufferP.get(), mBufferP.get(), mEnd);
  mBufferP = std::move(bufferP);
  mCapacity = capacity;
  return true;
}
