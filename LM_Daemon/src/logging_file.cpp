#include <exception>

#include "LM_Daemon/src/logging.h"
#include "util/console.h"
#include "util/native_file.h"
#include "util/util.h"

namespace {

constexpr std::int64_t kBytesPerKilobyte = 1000;
/// How many lines in a row may trust the tracked size before the system is asked.
constexpr int kMaxTrustedWrites = 32;

constexpr const char* kRule =
    "------------------------------------------------------------------------------------------\n";
constexpr const char* kColumns =
    "    Time    |Typ|  TID |      File      | Line|        Class And Method         | LogText\n"
    "------------+---+------+----------------+-----+---------------------------------+---------";

std::string backupName(const std::string& path) {
  return path.substr(0, path.rfind('.')) + ".bak";
}

}  // namespace

void Logging::openLogFile() {
  if (mPars.mLogFile.empty()) mPars.mLogFile = "forgot_to_name_this_file_log.txt";
  const bool isFullPath = mPars.mLogFile.find('\\') != std::string::npos;
  mPath = isFullPath ? mPars.mLogFile : mDirectory + "\\" + mPars.mLogFile;
  mFileP = mMaker();
  if (mFileP == nullptr) {
    logError(__LINE__, "Logging::init", "Opening log file '" + mPars.mLogFile + "failed!");
    mPars.mIsLogToFile = false;
    return;
  }
  mFileP->open(mPath);
  writeHeader();
  startSizeTracking(sizeLimit());
}

void Logging::writeHeader() {
  emit(kRule + ("Lumetra logfile '" + mPars.mLogFile + "' opened at " + Util::localDate() + "\n") + kRule +
       kColumns + "\n");
}

std::int64_t Logging::sizeLimit() const noexcept {
  return mPars.mMaxSize * kBytesPerKilobyte;
}

void Logging::startSizeTracking(std::int64_t fullAt) noexcept {
  mFullAt = fullAt;
  mWritesSinceExactSize = kMaxTrustedWrites;
}

/// Other processes may append to the same file, so the size is asked of the system once a millisecond; within
/// one, only every few lines, because asking costs a third of a line.
bool Logging::isFull() noexcept {
  const bool isExact = mMsOfDay != mMsOfExactSize || ++mWritesSinceExactSize > kMaxTrustedWrites;
  if (isExact) {
    mMsOfExactSize = mMsOfDay;
    mWritesSinceExactSize = 0;
  }
  const std::int64_t size = mFileP->position(isExact);
  return size >= 0 && size >= mFullAt;
}

void Logging::writeEntry(std::string_view line) noexcept {
  try {
    if (mFileP != nullptr && isFull()) backupLocked();
  } catch (const std::exception&) {
    // Without memory there is no backup; the entry itself needs none.
  }
  emit(line);
}

/// `line` ends in a line end.
void Logging::emit(std::string_view line) noexcept {
  if (mFileP != nullptr && mPars.mIsLogToFile) mFileP->write(line);
  if (mPars.mIsLogToCnsl) printLine(line.substr(0, line.size() - 1));
}

/// An entry of the log itself, written while the lock is held and another entry may wait to be written.
void Logging::logError(int sourceLine, std::string_view methodName, std::string_view text) noexcept {
  const std::string_view sourceFile = LM_LOG_SOURCE_FILE;
  if (!isLogged(LogLevel::kError) || !isFileWanted(sourceFile)) return;
  LogText line;
  appendStart(line, LogLevel::kError);
  appendPosition(line, sourceFile, sourceLine, "Logging", methodName);
  line.append(text);
  line.append("\n");
  emit(line.from(0));
}

int Logging::backupLocked() {
  if (mFileP == nullptr) return -1;
  mFileP->close();
  const std::string backup = backupName(mPath);
  if (removeFile(backup) == FileChange::kFailed) {
    resumeLogFile();
    logError(__LINE__, "Logging::backupLogFile", "'" + backup + "' couldn't be removed!");
    return -2;
  }
  if (renameFile(mPath, backup) == FileChange::kFailed) {
    resumeLogFile();
    printLine("File '" + mPath + "' couldn't be renamed to '" + backup + "'!");
    return -3;
  }
  if (mFileP->open(mPath))
    writeHeader();
  else
    logError(__LINE__, "Logging::backupLogFile", "Opening of stream of'" + mPath + "' failed!\n");
  startSizeTracking(sizeLimit());
  return 0;
}

/// No entry is lost to a backup that isn't possible. It is tried again when as much again has been written.
void Logging::resumeLogFile() {
  if (!mFileP->open(mPath)) return;
  startSizeTracking(mFileP->position(true) + sizeLimit());
}
