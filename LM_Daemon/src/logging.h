/// The log of the process: one line per entry, with time, level, thread, source position and text, into a
/// file and onto standard output. Any thread may log; an entry belongs to the thread that opened it. A forked
/// child may not log: another thread may have held the lock at that moment.
///
///   LM_LOG(kInfo, "AutoCadProxy", "AutoCadProxy::moveXYZ") << "Move x-Direction, value: " << dx;
///
/// costs a test of two flags when the level is off or there is no usable log: nothing is formatted, locked or
/// allocated, and the operands of << are not evaluated. The entry is closed in any case, also when
/// something streamed into it throws.
#ifndef LM_DAEMON_SRC_LOGGING_H
#define LM_DAEMON_SRC_LOGGING_H

#include "LM_Daemon/src/early_entries.h"
#include "LM_Daemon/src/log_file.h"
#include "LM_Daemon/src/log_level.h"
#include "LM_Daemon/src/log_pars.h"
#include "LM_Daemon/src/log_position.h"
#include "LM_Daemon/src/log_text.h"
#include "LM_Daemon/src/rotating_log_file.h"
#include "util/mutex.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <ios>
#include <string>
#include <string_view>
#include <type_traits>

class Logging {
 public:
  /// Streamed as an int, these are commands and not data: end of entry, and "dump the next string in
  /// hexadecimal".
  static constexpr int kEndOfEntry = 314159;
  static constexpr int kHexDumpNext = 271828;
  /// What the marker holds while there is a usable log; 0 otherwise.
  static constexpr std::int32_t kValid = 314159;

  /// Becomes the log that log calls go to. `maker` makes the file that init() opens.
  explicit Logging(LogFileMaker maker = makeLogFile);
  /// From here on every log call does nothing. No other thread may be in a log call any more.
  ~Logging();
  Logging(const Logging&) = delete;
  Logging& operator=(const Logging&) = delete;

  /// The folder of a log file that is named without a backslash, for an init() whose parameters name none.
  void setDirectory(std::string path);

  /// Takes over the parameters and opens the file, if they want one; a header block is appended to what it
  /// holds. The entries logged before the first init() are the first after it, as far as the parameters want
  /// them. A file that cannot be opened is not reported; what is written to it is lost.
  void init(const LogPars& pars);

  /// Makes the log file the one backup and begins a new one. 0: done, or another process has just done it;
  /// -1: no file is open; -2: the old backup could not be removed; -3: the file could not be renamed, or
  /// there is no memory for it. After -2 and -3 writing to the file continues.
  int backupLogFile() noexcept;

  /// Whether an entry of this level may be written at all.
  static bool isLogged(LogLevel level) noexcept {
    return sMarker.load(std::memory_order_acquire) == kValid &&
           (sLevelMask.load(std::memory_order_relaxed) & logLevelBit(level)) != 0;
  }

  /// The log that log calls go to; null while there is none.
  static Logging* current() noexcept { return sCurrentP.load(std::memory_order_acquire); }

  /// Opens an entry: true when it is to be written. The calling thread then holds the lock, streams the text
  /// and closes the entry with kEndOfEntry. An entry opened while another one of the same thread is open is
  /// written before that one; one that is nested in more than seven others is left out. `position` is a
  /// LogPosition's text.
  bool openEntry(LogLevel level, std::string_view sourceFile, std::string_view position) noexcept;

  /// A piece of the calling thread's open entry; without one it is dropped. Texts, characters, integers,
  /// unscoped enumerators, floating point numbers, pointers; std::hex and std::dec until the end of the
  /// entry, other manipulators do nothing.
  template <typename T>
  Logging& operator<<(const T& piece) noexcept {
    if (isOwner() && mDepth > 0) append(piece);
    return *this;
  }

 private:
  friend class LogEntry;
  struct OpenEntry {
    std::uint64_t number;
    std::size_t start;
    LogLevel level;
    std::string_view sourceFile;
    bool isHexDumpNext;
    bool isHexadecimal;
  };
  class Lock;

  /// Entries of one thread that may be open in each other.
  static constexpr std::size_t kMaxNesting = 8;

  // What is streamed, by the thread that has an entry open.
  void append(std::string_view text) noexcept;
  void append(const char* textP) noexcept {
    if (textP != nullptr) append(std::string_view(textP));
  }
  void append(const std::string& text) noexcept { append(std::string_view(text)); }
  void append(char character) noexcept { mText.append({&character, 1}); }
  void append(bool value) noexcept { mText.appendInteger(value ? 1u : 0u); }
  void append(int value) noexcept;
  void append(double value) noexcept { mText.appendReal(value); }
  void append(const void* pointerP) noexcept { mText.appendPointer(pointerP); }
  void append(std::ios_base& (*manipulator)(std::ios_base&)) noexcept;
  template <typename T, std::enable_if_t<std::is_integral_v<T>, int> = 0>
  void append(T value) noexcept {
    if constexpr (sizeof(T) == 1)
      append(static_cast<char>(value));
    else
      mText.appendInteger(value);
  }

  /// Whether the entry of that number is the innermost open one of the calling thread, whose id is `thread`.
  bool isInnermost(std::uint64_t number, std::uint32_t thread) const noexcept {
    return mOwner.load(std::memory_order_relaxed) == thread && mDepth > 0 &&
           mOpenEntries[mDepth - 1].number == number;
  }
  bool isOwner() const noexcept;
  bool isFileWanted(std::string_view sourceFile) const noexcept;
  void appendStart(LogText& text, LogLevel level, std::string_view position, std::uint32_t thread) noexcept;
  void endEntry() noexcept;
  void writeEntry(const OpenEntry& entry, std::string_view line) noexcept;
  void emit(std::string_view line) noexcept;
  void logError(std::string_view position, std::string_view text) noexcept;
  void openLogFile();
  void printHeader();
  void releaseEarlyEntries() noexcept;
  int report(RotatingLogFile::Rotation rotation) noexcept;

  static std::atomic<std::int32_t> sMarker;
  static std::atomic<std::uint32_t> sLevelMask;
  static std::atomic<Logging*> sCurrentP;

  LogPars mPars;
  std::string mDirectory;
  RotatingLogFile mFile;
  EarlyEntries mEarlyEntries;
  /// True until the first init(): until then neither the wanted levels nor the file are known.
  bool mIsCollecting = true;
  Mutex mMutex{"Logging"};
  /// Thread id of the thread that holds the lock, 0 for none. Only compared with a thread's own id.
  std::atomic<std::uint32_t> mOwner{0};

  LogText mText;
  std::array<OpenEntry, kMaxNesting> mOpenEntries = {};
  std::size_t mDepth = 0;
  /// Number of the entry opened last.
  std::uint64_t mEntryNumber = 0;

  /// Time, type and thread of the entry opened last.
  std::array<char, 32> mStart = {"hh:mm:ss.mmm|typ|"};
  std::size_t mStartSize = 0;
  std::uint32_t mStartThread = 0;
  /// Time of the entry opened last.
  std::uint32_t mMsOfDay = 0;
};

/// The log of this module. It lives as long as the module is loaded.
Logging& processLog();

/// One entry, from construction to close() or destruction, whatever happens in between.
class LogEntry {
 public:
  /// `position` is a LogPosition's text.
  LogEntry(LogLevel level, std::string_view sourceFile, std::string_view position) noexcept
      : mLogP(Logging::isLogged(level) ? open(level, sourceFile, position) : nullptr) {}
  ~LogEntry() { close(); }
  LogEntry(const LogEntry&) = delete;
  LogEntry& operator=(const LogEntry&) = delete;

  bool isOpen() const noexcept { return mLogP != nullptr; }

  /// Closes no other entry, should a sentinel among the pieces have ended this one.
  void close() noexcept {
    if (mLogP != nullptr && mLogP->isInnermost(mNumber, mThread)) mLogP->endEntry();
    mLogP = nullptr;
  }

  /// A piece is dropped once a sentinel has ended the entry: the lock is no longer ours.
  template <typename T>
  LogEntry& operator<<(const T& piece) noexcept {
    if (mLogP != nullptr && mLogP->isInnermost(mNumber, mThread)) mLogP->append(piece);
    return *this;
  }

 private:
  Logging* open(LogLevel level, std::string_view sourceFile, std::string_view position) noexcept;

  std::uint64_t mNumber = 0;
  /// Id of the thread that opened the entry, the only one that uses it. Kept because querying it costs more
  /// than streaming a piece.
  std::uint32_t mThread = 0;
  Logging* mLogP;
};

/// Index of the file name in a path, whichever separators the compiler puts into __FILE__.
constexpr std::size_t sourceFileNameStart(const char* pathP) {
  std::size_t start = 0;
  for (std::size_t i = 0; pathP[i] != '\0'; ++i)
    if (pathP[i] == '/' || pathP[i] == '\\') start = i + 1;
  return start;
}

#define LM_LOG_SOURCE_FILE \
  std::string_view(&__FILE__[std::integral_constant<std::size_t, sourceFileNameStart(__FILE__)>::value])

/// The text of this place in the sources, made by the compiler; the names are constant expressions.
#define LM_LOG_POSITION(className, methodName)                                                      \
  []() noexcept {                                                                                   \
    static constexpr LogPosition kLogPosition(LM_LOG_SOURCE_FILE, __LINE__, className, methodName); \
    return kLogPosition.text();                                                                     \
  }()

/// A statement: opens an entry at `level` (an enumerator of LogLevel without its scope), into which the rest
/// of the statement streams. `methodName` is qualified with the class, as all log lines of the plug-in are.
#define LM_LOG(level, className, methodName)                                                             \
  for (LogEntry lmLogEntry(LogLevel::level, LM_LOG_SOURCE_FILE, LM_LOG_POSITION(className, methodName)); \
       lmLogEntry.isOpen(); lmLogEntry.close())                                                          \
  lmLogEntry

#endif
