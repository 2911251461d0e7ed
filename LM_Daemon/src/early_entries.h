/// Keeps the entries that are logged before the log is open: reading the settings logs, and the settings name
/// the log's file. One thread at a time.
#ifndef LM_DAEMON_SRC_EARLY_ENTRIES_H
#define LM_DAEMON_SRC_EARLY_ENTRIES_H

#include "LM_Daemon/src/log_level.h"
#include "LM_Daemon/src/log_text.h"

#include <array>
#include <cstddef>
#include <string_view>

class EarlyEntries {
 public:
  /// Keeps a copy. The first entries show best what went wrong at start, so beyond 256 entries or 64 KB of
  /// text further ones are dropped.
  void keep(LogLevel level, std::string_view sourceFile, std::string_view line) noexcept {
    if (mCount == mEntries.size() || mTexts.size() + sourceFile.size() + line.size() > kMaxSize) return;
    const std::size_t start = mTexts.size();
    char* const targetP = mTexts.extend(sourceFile.size() + line.size());
    if (targetP == nullptr) return;
    sourceFile.copy(targetP, sourceFile.size());
    line.copy(targetP + sourceFile.size(), line.size());
    mEntries[mCount++] = {level, start, start + sourceFile.size(), mTexts.size()};
  }

  /// Calls `use` with level, source file and line of each entry, in order, and forgets them.
  template <typename Use>
  void release(Use use) noexcept {
    for (std::size_t i = 0; i < mCount; ++i) {
      const Entry& entry = mEntries[i];
      use(entry.level, mTexts.from(entry.start).substr(0, entry.lineStart - entry.start),
          mTexts.from(entry.lineStart).substr(0, entry.end - entry.lineStart));
    }
    mCount = 0;
    mTexts.cut(0);
  }

 private:
  static constexpr std::size_t kMaxSize = std::size_t{64} * 1024;

  struct Entry {
    LogLevel level;
    std::size_t start;  ///< of the source file's name in the texts
    std::size_t lineStart;
    std::size_t end;
  };

  LogText mTexts;
  std::array<Entry, 256> mEntries = {};
  std::size_t mCount = 0;
};

#endif
