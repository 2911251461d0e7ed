#include "LM_Daemon/src/logging.h"

#include "LM_Daemon/src/log_header.h"
#include "util/console.h"
#include "util/threads.h"
#include "util/util.h"

#include <cassert>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <exception>
#include <utility>

// Constant-initialised, so that a log call before any constructor has run finds no log and returns.
std::atomic<std::int32_t> Logging::sMarker{0};
std::atomic<std::uint32_t> Logging::sLevelMask{0};
std::atomic<Logging*> Logging::sCurrentP{nullptr};

namespace {

// Where the pieces of mStart begin.
constexpr std::size_t kTypeStart = 13;
constexpr std::size_t kThreadStart = 17;
/// Of mStart when the thread's number has no more than six digits.
constexpr std::size_t kUsualStartSize = kThreadStart + 7;

constexpr std::int64_t kBytesPerKilobyte = 1000;

}  // namespace

/// Holds the log's lock, unless the thread has it already.
class Logging::Lock {
 public:
  explicit Lock(Logging& log) : mLog(log), mIsTaken(!log.isOwner() && log.mMutex.lock() == 0) {
    if (mIsTaken) mLog.mOwner.store(currentThreadId(), std::memory_order_relaxed);
  }
  ~Lock() {
    if (mIsTaken) release(mLog);
  }
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;

  static void release(Logging& log) {
    log.mOwner.store(0, std::memory_order_relaxed);
    log.mMutex.unlock();
  }

 private:
  Logging& mLog;
  const bool mIsTaken;
};

Logging::Logging(LogFileMaker maker) : mFile(maker) {
  LM_LOG(kCreation, "Logging", "Logging::Logging") << "Logging::Logging() constructing ...";
  // In force only until init(), and nothing opens a file before that.
  mPars.mLogFile = "c:\\def_log.txt";
  mPars.mMaxSize = 5000;
  // Until the settings are read every level is collected; init() drops what they do not want.
  sLevelMask.store(kEveryLevel, std::memory_order_relaxed);
  sCurrentP.store(this, std::memory_order_release);
  // Last: a thread that sees the marker finds the pointer and the mask set.
  sMarker.store(kValid, std::memory_order_release);
  LM_LOG(kCreation, "Logging", "Logging::Logging") << "Constructed.";
}

Logging::~Logging() {
  LM_LOG(kCreation, "Logging", "Logging::~Logging") << "Logging::~Logging(): destructing ...";
  // From here on nothing is logged, so the last text of this destructor never is. That order is wanted.
  sMarker.store(0, std::memory_order_release);
  Logging* thisP = this;
  // Only if it is this log: a later one may have taken its place.
  sCurrentP.compare_exchange_strong(thisP, nullptr);
  {
    const Lock lock(*this);
    mFile.close();
  }
  LM_LOG(kCreation, "Logging", "Logging::~Logging") << "Logging::~Logging(): destructed.";
}

void Logging::setDirectory(std::string path) {
  const Lock lock(*this);
  mDirectory = std::move(path);
}

void Logging::init(const LogPars& pars) {
  const Lock lock(*this);
  mPars = pars;
  // After a reset of the settings the parameters name no folder; the one set before holds then.
  if (!pars.mSettingsDirPath.empty()) mDirectory = pars.mSettingsDirPath;
  mFile.close();
  // After the old file is closed and before the new one opens, so that a failure to open is logged by the new
  // levels.
  sLevelMask.store(logLevelMask(mPars), std::memory_order_relaxed);
  if (mPars.mIsLogToFile) openLogFile();
  releaseEarlyEntries();
}

void Logging::openLogFile() {
  if (mPars.mLogFile.empty()) mPars.mLogFile = "forgot_to_name_this_file_log.txt";
  // Any backslash makes it a path, a relative one too; a plain name goes into the settings folder.
  const bool isFullPath = mPars.mLogFile.find('\\') != std::string::npos;
  const std::string path = isFullPath ? mPars.mLogFile : mDirectory + "\\" + mPars.mLogFile;
  if (mFile.open(path, mPars.mLogFile, mPars.mMaxSize * kBytesPerKilobyte)) {
    printHeader();
    return;
  }
  // Reached only without a file object (no memory). A file that cannot be opened is not reported. The missing
  // quote is part of the fixed text.
  logError(LM_LOG_POSITION("Logging", "Logging::init"), "Opening log file '" + mPars.mLogFile + "failed!");
  mPars.mIsLogToFile = false;
}

/// The file has its header already.
void Logging::printHeader() {
  if (!mPars.mIsLogToCnsl) return;
  const std::string header = logHeader(mPars.mLogFile);
  printLine(std::string_view(header).substr(0, header.size() - 1));
}

void Logging::releaseEarlyEntries() noexcept {
  mIsCollecting = false;
  mEarlyEntries.release([this](LogLevel level, std::string_view sourceFile, std::string_view line) {
    if (isLogged(level) && isFileWanted(sourceFile)) emit(line);
  });
}

int Logging::backupLogFile() noexcept {
  const Lock lock(*this);
  return mFile.isOpen() ? report(mFile.rotate()) : -1;
}

/// Reports a rotation and returns the result of backupLogFile(). A message that finds no memory is dropped.
int Logging::report(RotatingLogFile::Rotation rotation) noexcept try {
  using Rotation = RotatingLogFile::Rotation;
  switch (rotation) {
    case Rotation::kNone:
      return 0;
    case Rotation::kDone:
      printHeader();
      return 0;
    // The backup has been made, so the result is success.
    case Rotation::kNotOpened:
      logError(LM_LOG_POSITION("Logging", "Logging::backupLogFile"),
               "Opening of stream of'" + mFile.path() + "' failed!\n");
      return 0;
    case Rotation::kBackupKept:
      logError(LM_LOG_POSITION("Logging", "Logging::backupLogFile"),
               "'" + mFile.backupPath() + "' couldn't be removed!");
      return -2;
    case Rotation::kNotRenamed:
      // On standard output, not in the log, and without a level: the text and its place are fixed.
      printLine("File '" + mFile.path() + "' couldn't be renamed to '" + mFile.backupPath() + "'!");
      return -3;
    case Rotation::kNoMemory:
      return -3;
  }
  return -3;
} catch (const std::exception&) {
  return -3;
}

/// An entry of the log itself, in a text of its own: the lock is held, and an outer entry may be half
/// streamed.
void Logging::logError(std::string_view position, std::string_view text) noexcept {
  if (!isLogged(LogLevel::kError) || !isFileWanted(LM_LOG_SOURCE_FILE)) return;
  LogText line;
  appendStart(line, LogLevel::kError, position, currentThreadId());
  line.append(text);
  line.append("\n");
  emit(line.from(0));
}

bool Logging::isOwner() const noexcept {
  // Relaxed is enough: only the thread itself ever stores its own id, so it cannot read it from another one.
  return mOwner.load(std::memory_order_relaxed) == currentThreadId();
}

bool Logging::isFileWanted(std::string_view sourceFile) const noexcept {
  if (mPars.mExclFileToLog.empty()) return true;
  // Compared by the bare file name: callers of openEntry() may pass a path with either separator.
  std::size_t separator = sourceFile.rfind('/');
  if (separator == std::string_view::npos) separator = sourceFile.rfind('\\');
  // Without a separator npos + 1 is 0: the whole path.
  return sourceFile.substr(separator + 1) == mPars.mExclFileToLog;
}

bool Logging::openEntry(LogLevel level, std::string_view sourceFile, std::string_view position) noexcept {
  if (!isLogged(level)) return false;
  const std::uint32_t thread = currentThreadId();
  const bool isNested = mOwner.load(std::memory_order_relaxed) == thread;
  if (!isNested) {
    // A lock that fails drops the entry: writing without it could mix two lines.
    if (mMutex.lock() != 0) return false;
    mOwner.store(thread, std::memory_order_relaxed);
  }
  // After the lock, because init() may change the parameters on another thread.
  if (mDepth == kMaxNesting || !isFileWanted(sourceFile)) {
    if (!isNested) Lock::release(*this);
    return false;
  }
  // Field by field: a record that is put together first and copied then makes the processor wait.
  OpenEntry& entry = mOpenEntries[mDepth++];
  entry.number = ++mEntryNumber;
  entry.start = mText.size();
  entry.level = level;
  entry.sourceFile = sourceFile;
  entry.isHexDumpNext = false;
  entry.isHexadecimal = mText.isHexadecimal();
  mText.setHexadecimal(false);
  appendStart(mText, level, position, thread);
  return true;
}

/// The line up to its text. Time and thread rarely change between lines, so their formatted text is cached.
void Logging::appendStart(LogText& text, LogLevel level, std::string_view position,
                          std::uint32_t thread) noexcept {
  const std::uint32_t msOfDay = Util::utcMsOfDay();
  if (msOfDay != mMsOfDay || thread != mStartThread) {
    mMsOfDay = msOfDay;
    mStartThread = thread;
    Util::writeTimeOfDay(mStart.data(), msOfDay);
    // A longer thread id widens its column; nothing is cut.
    const int size = std::snprintf(&mStart[kThreadStart], mStart.size() - kThreadStart, "%6u|", thread);
    mStartSize = kThreadStart + static_cast<std::size_t>(size);
  }
  char* const startP = text.extend(mStartSize + position.size() + LogPosition::kGap.size());
  if (startP == nullptr) return;
  // A copy of constant size is a few instructions, and few threads have a longer number.
  std::memcpy(startP, mStart.data(), kUsualStartSize);
  if (mStartSize > kUsualStartSize)
    std::memcpy(startP + kUsualStartSize, &mStart[kUsualStartSize], mStartSize - kUsualStartSize);
  std::memcpy(startP + kTypeStart, logLevelType(level), kLogLevelTypeSize);
  position.copy(startP + mStartSize, position.size());
  LogPosition::kGap.copy(startP + mStartSize + position.size(), LogPosition::kGap.size());
}

void Logging::writeEntry(const OpenEntry& entry, std::string_view line) noexcept {
  if (mIsCollecting) return mEarlyEntries.keep(entry.level, entry.sourceFile, line);
  if (mFile.isOpen()) report(mFile.prepare(mMsOfDay));
  emit(line);
}

/// `line` ends in a line end.
void Logging::emit(std::string_view line) noexcept {
  if (mFile.isOpen()) mFile.write(line);
  if (mPars.mIsLogToCnsl) printLine(line.substr(0, line.size() - 1));
}

void Logging::endEntry() noexcept {
  assert(mDepth > 0 && isOwner() && "an entry is closed by the thread that has it open");
  const OpenEntry& entry = mOpenEntries[--mDepth];
  const std::size_t start = entry.start;
  mText.setHexadecimal(entry.isHexadecimal);
  // The line end is part of the text, so that each line reaches the file in one write.
  mText.append("\n");
  writeEntry(entry, mText.from(start));
  mText.cut(start);
  if (mDepth == 0) Lock::release(*this);
}

void Logging::append(std::string_view text) noexcept {
  assert(mDepth > 0 && "a piece needs an open entry");
  bool& isHexDumpNext = mOpenEntries[mDepth - 1].isHexDumpNext;
  if (isHexDumpNext)
    mText.appendHexDump(text);
  else
    mText.append(text);
  isHexDumpNext = false;
}

void Logging::append(int value) noexcept {
  // Only an int is a sentinel. The same value as an unsigned or a long is data.
  if (value == kEndOfEntry)
    endEntry();
  else if (value == kHexDumpNext)
    mOpenEntries[mDepth - 1].isHexDumpNext = true;
  else
    mText.appendInteger(value);
}

void Logging::append(std::ios_base& (*manipulator)(std::ios_base&)) noexcept {
  const auto hex = static_cast<std::ios_base& (*)(std::ios_base&)>(std::hex);
  const auto dec = static_cast<std::ios_base& (*)(std::ios_base&)>(std::dec);
  if (manipulator == hex) mText.setHexadecimal(true);
  if (manipulator == dec) mText.setHexadecimal(false);
}

Logging* LogEntry::open(LogLevel level, std::string_view sourceFile, std::string_view position) noexcept {
  Logging* const logP = Logging::current();
  if (logP == nullptr || !logP->openEntry(level, sourceFile, position)) return nullptr;
  // Safe to read: this thread has held the lock since openEntry().
  mNumber = logP->mEntryNumber;
  mThread = logP->mOwner.load(std::memory_order_relaxed);
  return logP;
}
