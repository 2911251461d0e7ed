/// A file in memory that is opened by a path like any other; for feeding bytes to what reads files.
#ifndef FUZZ_MEMORY_FILE_H
#define FUZZ_MEMORY_FILE_H

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

class MemoryFile {
 public:
  MemoryFile() : mHandle(memfd_create("fuzz", 0)) {
    if (mHandle < 0) std::abort();
  }
  ~MemoryFile() { close(mHandle); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  /// In Windows syntax, as the module takes it.
  std::string path() const { return "\\proc\\self\\fd\\" + std::to_string(mHandle); }

  void fill(const std::uint8_t* dataP, std::size_t size) {
    if (ftruncate(mHandle, 0) != 0) std::abort();
    if (pwrite(mHandle, dataP, size, 0) != static_cast<ssize_t>(size)) std::abort();
  }

 private:
  int mHandle;
};

#endif
