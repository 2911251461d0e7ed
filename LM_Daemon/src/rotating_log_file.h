/// The log's file with its size limit and its one backup. Several processes may write to the same file: each
/// keeps the limit, the newest backup stays, and no line is lost or mixed with another.
///
/// A file that has reached the limit is renamed to the backup, and a new one is begun. Only the process that
/// has claimed the file does that; the others notice at their next check that the name refers to another
/// file, and follow. What they write until then goes to the end of the backup.
///
/// Does not log; the caller reports what the operations return. One thread at a time.
#ifndef LM_DAEMON_SRC_ROTATING_LOG_FILE_H
#define LM_DAEMON_SRC_ROTATING_LOG_FILE_H

#include "LM_Daemon/src/log_file.h"
#include "LM_Daemon/src/log_text.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class RotatingLogFile {
 public:
  enum class Rotation {
    kNone,        ///< there was no reason for one, or another process has made or is making it
    kDone,        ///< the file is the backup now, and a new one with its header is open
    kNotOpened,   ///< the file is the backup now, and the new one cannot be opened
    kBackupKept,  ///< the old backup cannot be removed
    kNotRenamed,  ///< the file cannot be renamed; the old backup is there still
    kNoMemory
  };

  /// How long a name is trusted to refer to the open file: querying Windows costs as much as dozens of lines.
  static constexpr std::uint32_t kCheckMs = 50;

  explicit RotatingLogFile(LogFileMaker maker) : mMaker(maker) {}

  /// Opens the file of `path` and appends a header that shows `name`. False when there is no file object, and
  /// nothing is open then. A file that cannot be opened is not reported, and drops what is written to it.
  bool open(const std::string& path, const std::string& name, std::int64_t sizeLimit);
  void close();
  bool isOpen() const { return mFileP != nullptr; }

  const std::string& path() const { return mPath; }
  const std::string& backupPath() const { return mBackupPath; }

  /// To be called before each line, at the time `ms`: rotates a file that has reached the limit. After a
  /// failed rotation writing continues, and the next attempt is due after another full size.
  Rotation prepare(std::uint32_t ms) noexcept { return isTrusted(ms) ? Rotation::kNone : check(ms); }

  /// `line` ends in a line end.
  void write(std::string_view line) noexcept {
    mFileP->write(line);
    mUnconfirmed.append(line);
    --mTrustedWrites;
    // Twice, as if all were line ends of two characters: a check that comes too early finds nothing.
    mTrustedBytes -= 2 * static_cast<std::int64_t>(line.size());
  }

  /// Rotates now. A file that is itself named like its backup is kept and continued after a new header.
  Rotation rotate() noexcept;

 private:
  /// How many lines in a row may trust the tracked size before the system is asked.
  static constexpr int kMaxTrustedWrites = 32;
  static constexpr std::size_t kMaxUnconfirmed = std::size_t{30} * 1024;

  /// Whether the next line needs no check: most do not, so this is all that they pay.
  bool isTrusted(std::uint32_t ms) const noexcept {
    return ms == mMsOfSize && mTrustedWrites > 0 && mTrustedBytes > 0;
  }
  Rotation check(std::uint32_t ms) noexcept;
  bool isFull(bool isExact) noexcept;
  bool isReplaced();
  void follow();
  Rotation replace();
  Rotation resume(Rotation result) noexcept;
  std::string freeName();
  void expectLimitAt(std::int64_t size) noexcept;

  const LogFileMaker mMaker;
  std::unique_ptr<LogFile> mFileP;
  std::string mPath;
  std::string mBackupPath;
  std::string mName;
  std::int64_t mSizeLimit = 0;
  std::int64_t mFullAt = 0;
  /// The file was closed and there was no memory to open it again.
  bool mIsResumeDue = false;
  std::uint32_t mMsOfCheck = 0;
  std::uint32_t mMsOfSize = 0;
  int mTrustedWrites = 0;
  /// No more than may be written before the file is full, or too much is unconfirmed.
  std::int64_t mTrustedBytes = 0;
  int mRotations = 0;
  /// Lines written since the name was last seen to lead to the open file. Another process may have made that
  /// the backup, and then removed it, between the check and a write.
  LogText mUnconfirmed;
};

#endif
