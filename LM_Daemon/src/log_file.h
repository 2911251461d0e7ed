/// Where the lines of the log go: the seam at which a test puts a file that misbehaves. One thread at a time.
#ifndef LM_DAEMON_SRC_LOG_FILE_H
#define LM_DAEMON_SRC_LOG_FILE_H

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class LogFile {
 public:
  virtual ~LogFile() = default;

  /// Opens `path` (Windows syntax) for appending, shared with other processes for reading and writing, and
  /// forgets an earlier failure. False when it cannot be opened: the file is then in a failed state. Without
  /// memory it throws, and the file that was open stays so.
  virtual bool open(const std::string& path) = 0;
  virtual void close() = 0;

  /// Appends `text` to whatever the file holds, in one piece. A failure leaves the file in a failed state, in
  /// which everything is dropped.
  virtual void write(std::string_view text) = 0;

  /// Bytes before the place where the last write ended. isExact: ask the system, which counts what other
  /// processes wrote before; otherwise use the size tracked here. -1 in a failed state.
  virtual std::int64_t position(bool isExact) = 0;

  /// Whether the open file still has the name that it was opened by.
  virtual bool hasItsName() = 0;
  /// Whether the open file is the one that `path` names now.
  virtual bool isNamed(const std::string& path) = 0;
};

/// Makes a log file, not opened; null when that is not possible.
using LogFileMaker = std::unique_ptr<LogFile> (*)();

std::unique_ptr<LogFile> makeLogFile();

#endif
