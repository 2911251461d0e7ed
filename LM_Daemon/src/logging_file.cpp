#include "LM_Daemon/src/logging.h"
#include "util/console.h"
#include "util/native_file.h"
#include "util/util.h"

#include <algorithm>
#include <cctype>
#include <exception>

namespace {

constexpr std::int64_t kBytesPerKilobyte = 1000;

constexpr std::string_view kRule =
    "------------------------------------------------------------------------------------------\n";
constexpr std::string_view kColumns =
    "    Time    |Typ|  TID |      File      | Line|        Class And Method         | LogText\n"
    "------------+---+------+----------------+-----+---------------------------------+---------\n";

std::string backupName(const std::string& path) {
  return path.substr(0, path.rfind('.')) + ".bak";
}

/// Windows makes no difference between small and capital letters.
bool isSameFile(const std::string& path, const std::string& other) {
  const auto isSameLetter = [](unsigned char a, unsigned char b) {
    return std::tolower(a) == std::tolower(b);
  };
  return std::equal(path.begin(), path.end(), other.begin(), other.end(), isSameLetter);
}

}  // namespace

void Logging::openLogFile() {
  if (mPars.mLogFile.empty()) mPars.mLogFile = "forgot_to_name_this_file_log.txt";
  const bool isFullPath = mPars.mLogFile.find('\\') != std::string::npos;
  mPath = isFullPath ? mPars.mLogFile : mDirectory + "\\" + mPars.mLogFile;
  mFileP = mMaker();
  if (mFileP == nullptr) {
    logError(LM_LOG_POSITION("Logging", "Logging::init"), "Opening log file '" + mPars.mLogFile + "failed!");
    mPars.mIsLogToFile = false;
    return;
  }
  mFileP->open(mPath);
  writeHeader();
  startSizeTracking(sizeLimit());
}

void Logging::writeHeader() noexcept {
  const std::string date = Util::localDate();
  LogText block;
  for (const std::string_view piece :
       {kRule, std::string_view("Lumetra logfile '"), std::string_view(mPars.mLogFile),
        std::string_view("' opened at "), std::string_view(date), std::string_view("\n"), kRule, kColumns})
    block.append(piece);
  emit(block.from(0));
}

std::int64_t Logging::sizeLimit() const noexcept {
  return mPars.mMaxSize * kBytesPerKilobyte;
}

void Logging::startSizeTracking(std::int64_t fullAt) noexcept {
  mFullAt = fullAt;
  mWritesSinceExactSize = kMaxTrustedWrites;
}

/// An entry of the log itself, written while the lock is held and another entry may wait to be written.
void Logging::logError(std::string_view position, std::string_view text) noexcept {
  if (!isLogged(LogLevel::kError) || !isFileWanted(LM_LOG_SOURCE_FILE)) return;
  LogText line;
  appendStart(line, LogLevel::kError, position);
  line.append(text);
  line.append("\n");
  emit(line.from(0));
}

int Logging::backupLocked() noexcept {
  if (mFileP == nullptr) return -1;
  try {
    return replaceLogFile();
  } catch (const std::exception&) {
    // Without memory there is no backup, and no entry may be lost to that.
    if (mIsResumeDue) resumeLogFile();
    return -3;
  }
}

int Logging::replaceLogFile() {
  const std::string backup = backupName(mPath);
  const bool isItsOwnBackup = isSameFile(mPath, backup);
  mFileP->close();
  mIsResumeDue = true;
  if (!isItsOwnBackup && removeFile(backup) == FileChange::kFailed) {
    resumeLogFile();
    logError(LM_LOG_POSITION("Logging", "Logging::backupLogFile"), "'" + backup + "' couldn't be removed!");
    return -2;
  }
  if (renameFile(mPath, backup) == FileChange::kFailed) {
    resumeLogFile();
    printLine("File '" + mPath + "' couldn't be renamed to '" + backup + "'!");
    return -3;
  }
  const bool isOpen = mFileP->open(mPath);
  mIsResumeDue = false;
  startSizeTracking(sizeLimit() + (isItsOwnBackup ? mFileP->position(true) : 0));
  if (isOpen)
    writeHeader();
  else
    logError(LM_LOG_POSITION("Logging", "Logging::backupLogFile"),
             "Opening of stream of'" + mPath + "' failed!\n");
  return 0;
}

/// No entry is lost to a backup that isn't possible. It is tried again when as much again has been written.
void Logging::resumeLogFile() noexcept {
  try {
    mFileP->open(mPath);
    mIsResumeDue = false;
    startSizeTracking(mFileP->position(true) + sizeLimit());
  } catch (const std::exception&) {
    // The next entry tries it again.
  }
}
