#include "LM_Daemon/src/log_file.h"

#include "util/native_file.h"

#include <new>

// Not in the unnamed namespace: the class name is visible in the module's file (its type information), and an
// unnamed namespace would make it depend on the folder of the sources.
class NativeLogFile : public LogFile {
 public:
  bool open(const std::string& path) override {
    mHasFailed = !mFile.openForAppending(path);
    mPosition = mFile.position();
    return !mHasFailed;
  }

  void close() override { mFile.close(); }

  void write(std::string_view text) override {
    if (mHasFailed || !mFile.isOpen()) return;
    mHasFailed = !mFile.write(text);
    // By the size on disk, which on Windows counts a CR for each line end. Added after a failure too:
    // position() then returns -1 and the next open() sets it anew.
    mPosition += static_cast<std::int64_t>(NativeFile::appendedSize(text));
  }

  std::int64_t position(bool isExact) override {
    if (mHasFailed || !mFile.isOpen()) return -1;
    if (isExact) mPosition = mFile.position();
    return mPosition;
  }

  bool hasItsName() override { return mFile.hasItsName(); }
  bool isNamed(const std::string& path) override { return mFile.isNamed(systemPath(path)); }

 private:
  NativeFile mFile;
  /// Kept here because asking the system costs a third of a write.
  std::int64_t mPosition = 0;
  bool mHasFailed = false;
};

std::unique_ptr<LogFile> makeLogFile() {
  // A null result is a case that the caller handles: the log must not throw into the host.
  return std::unique_ptr<LogFile>(new (std::nothrow) NativeLogFile);
}
