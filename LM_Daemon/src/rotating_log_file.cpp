#include "LM_Daemon/src/rotating_log_file.h"

#include "LM_Daemon/src/log_header.h"
#include "util/native_file.h"
#include "util/threads.h"
#include "util/util.h"

#include <algorithm>
#include <cassert>
#include <cctype>
#include <exception>

namespace {

constexpr std::size_t kUsualLine = 1024;

std::string backupName(const std::string& path) {
  // The extension is replaced, not extended. The search does not stop at a backslash: without a dot in the
  // file name it finds one in a folder's name.
  return path.substr(0, path.rfind('.')) + ".bak";
}

/// Windows does not distinguish small and capital letters in names.
bool isSameName(const std::string& path, const std::string& other) {
  const auto isSameLetter = [](unsigned char a, unsigned char b) {
    return std::tolower(a) == std::tolower(b);
  };
  return std::equal(path.begin(), path.end(), other.begin(), other.end(), isSameLetter);
}

}  // namespace

bool RotatingLogFile::open(const std::string& path, const std::string& name, std::int64_t sizeLimit) {
  close();
  mPath = path;
  mBackupPath = backupName(path);
  mName = name;
  mSizeLimit = sizeLimit;
  mFileP = mMaker();
  if (mFileP == nullptr) return false;
  // A failure is not reported: the file object then drops what is written to it.
  mFileP->open(mPath);
  mFileP->write(logHeader(mName));
  expectLimitAt(mSizeLimit);
  // Reserves the room now, so that writing a line allocates nothing.
  mUnconfirmed.extend(kMaxUnconfirmed + kUsualLine);
  mUnconfirmed.cut(0);
  return true;
}

void RotatingLogFile::close() {
  mFileP.reset();
  mIsResumeDue = false;
  mUnconfirmed.cut(0);
}

/// The next line is checked, and the check asks the system.
void RotatingLogFile::expectLimitAt(std::int64_t size) noexcept {
  mFullAt = size;
  mTrustedWrites = 0;
  // No time of day has this value.
  mMsOfSize = ~0u;
}

bool RotatingLogFile::isFull(bool isExact) noexcept {
  const std::int64_t size = mFileP->position(isExact);
  mTrustedBytes =
      std::min(mFullAt - size, static_cast<std::int64_t>(kMaxUnconfirmed + 1 - mUnconfirmed.size()));
  return size >= 0 && size >= mFullAt;
}

/// Other processes may write to the same file, so the system is asked for the size whenever time has moved
/// on, and until then every few lines, because asking costs a third of a line. They may also replace it.
RotatingLogFile::Rotation RotatingLogFile::check(std::uint32_t ms) noexcept try {
  assert(isOpen() && "a line needs an open log");
  if (mIsResumeDue) return resume(Rotation::kNone);
  const bool isExact = ms != mMsOfSize || mTrustedWrites <= 0;
  mMsOfSize = ms;
  if (isExact) mTrustedWrites = kMaxTrustedWrites;
  // At midnight the difference is huge, and the check is due.
  if (ms - mMsOfCheck >= kCheckMs || mUnconfirmed.size() > kMaxUnconfirmed) {
    mMsOfCheck = ms;
    if (isReplaced()) follow();
    mUnconfirmed.cut(0);
  }
  return isFull(isExact) ? rotate() : Rotation::kNone;
} catch (const std::exception&) {
  return Rotation::kNoMemory;
}

/// Whether another process has made the open file its backup, or removed it. A file that is gone altogether
/// is not replaced: only a rotation begins a new one.
bool RotatingLogFile::isReplaced() {
  return mFileP->position(false) >= 0 && !mFileP->hasItsName() && Util::fileExists(mPath);
}

/// Continues in the file that has the name now. That one has a header already.
void RotatingLogFile::follow() {
  const bool isKept = mFileP->isNamed(mBackupPath);
  mFileP->open(mPath);
  // If the old file is the backup now, these lines are in it. If it is gone, they are written again.
  if (!isKept) mFileP->write(mUnconfirmed.from(0));
  expectLimitAt(mSizeLimit);
}

RotatingLogFile::Rotation RotatingLogFile::rotate() noexcept {
  try {
    // Held until the end of the rotation, so that two processes never rotate the same file twice.
    FileClaim claim;
    if (isReplaced()) {
      follow();
      return Rotation::kNone;
    }
    // A file that is gone cannot be claimed, and there is nothing to protect then.
    if (!claim.claim(mPath) && Util::fileExists(mPath)) return Rotation::kNone;
    // Another process may have been faster than the claim.
    if (!isReplaced()) return replace();
    follow();
    return Rotation::kNone;
  } catch (const std::exception&) {
    // Without memory there is no backup, and that must not lose an entry.
    return mIsResumeDue ? resume(Rotation::kNoMemory) : Rotation::kNoMemory;
  }
}

/// The old backup is only moved aside until the file has its name, so that there is a backup whatever fails.
RotatingLogFile::Rotation RotatingLogFile::replace() {
  const bool isItsOwnBackup = isSameName(mPath, mBackupPath);
  const std::string aside = freeName();
  const std::string header = logHeader(mName);
  mFileP->close();
  // From here on the file is closed: whatever fails below, resume() opens it again.
  mIsResumeDue = true;
  mTrustedWrites = 0;
  if (!isItsOwnBackup && renameFile(mBackupPath, aside) == FileChange::kFailed)
    return resume(Rotation::kBackupKept);
  const FileChange change = isItsOwnBackup ? FileChange::kDone : renameFile(mPath, mBackupPath);
  // The log itself was not renamed, so the old backup gets its name back.
  if (change != FileChange::kDone) renameFile(aside, mBackupPath);
  if (change == FileChange::kFailed) return resume(Rotation::kNotRenamed);
  const bool isOpen = mFileP->open(mPath);
  mIsResumeDue = false;
  mUnconfirmed.cut(0);
  removeFile(aside);
  // A log named like its backup keeps its text, so the limit counts from its present size.
  expectLimitAt(mSizeLimit + (isItsOwnBackup ? mFileP->position(true) : 0));
  if (!isOpen) return Rotation::kNotOpened;
  mFileP->write(header);
  return Rotation::kDone;
}

/// Opens the file again after a rotation that failed: an impossible backup must not lose an entry.
RotatingLogFile::Rotation RotatingLogFile::resume(Rotation result) noexcept try {
  mFileP->open(mPath);
  mIsResumeDue = false;
  // The next attempt comes after another full size, not with every line.
  expectLimitAt(mFileP->position(true) + mSizeLimit);
  return result;
} catch (const std::exception&) {
  return result;  // the next line tries again
}

/// On Windows a name stays taken while any process has the removed file open, so each is used once.
std::string RotatingLogFile::freeName() {
  return mBackupPath + "." + std::to_string(currentProcessId()) + "." + std::to_string(++mRotations);
}
