/// The levels of the log. `kError` is always on; each of the others has a switch in the settings.
#ifndef LM_DAEMON_SRC_LOG_LEVEL_H
#define LM_DAEMON_SRC_LOG_LEVEL_H

#include <cstddef>
#include <cstdint>

struct LogPars;

enum class LogLevel {
  kError = 0,
  kWarning,
  kCreation,  ///< construction, loading, life-cycle events
  kTrace,
  kDevCom,  ///< communication with the device daemon
  kIntCom,  ///< internal communication
  kInfo,
  kDebug,
  kTmp  ///< data of passing interest
};

constexpr std::uint32_t kLogLevelCount = 9;

/// One bit a level; values beyond the last level have none.
constexpr std::uint32_t logLevelBit(LogLevel level) {
  const auto value = static_cast<std::uint32_t>(level);
  return value < kLogLevelCount ? 1u << value : 0u;
}

constexpr std::uint32_t kEveryLevel = (1u << kLogLevelCount) - 1;

constexpr std::size_t kLogLevelTypeSize = 3;

/// The three letters of the level in a line; "???" for a value beyond the last level, which is
/// never written.
const char* logLevelType(LogLevel level);

/// The bits of the levels that `pars` switches on, `kError` always among them.
std::uint32_t logLevelMask(const LogPars& pars);

#endif
