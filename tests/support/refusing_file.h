/// A file that can be opened for appending and takes nothing then, as on a disk that is full.
#ifndef TESTS_SUPPORT_REFUSING_FILE_H
#define TESTS_SUPPORT_REFUSING_FILE_H

#include <cstdint>
#include <string>

class RefusingFile {
 public:
  RefusingFile();
  ~RefusingFile();
  RefusingFile(const RefusingFile&) = delete;
  RefusingFile& operator=(const RefusingFile&) = delete;

  /// In Windows syntax.
  std::string path() const;

  /// What has opened the file before can write no more. Until then Windows takes what fits into a buffer.
  void refuse();

 private:
  /// On Windows, which has no device that is always full: the end of a pipe at which nobody reads.
  [[maybe_unused]] std::intptr_t mPipe = -1;
};

#endif
