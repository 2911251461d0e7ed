#include "LM_Daemon/src/log_level.h"

#include "LM_Daemon/src/log_pars.h"

const char* logLevelType(LogLevel level) {
  // In the order of LogLevel.
  static constexpr const char* kTypes[kLogLevelCount] = {"ERR", "WRN", "CRT", "TRC", "DCM",
                                                         "ICM", "INF", "DBG", "TMP"};
  // A level out of range has no bit and would index beyond the table.
  return logLevelBit(level) != 0 ? kTypes[static_cast<std::uint32_t>(level)] : "???";
}

std::uint32_t logLevelMask(const LogPars& pars) {
  std::uint32_t mask = logLevelBit(LogLevel::kError);
  const auto add = [&mask](bool isOn, LogLevel level) { mask |= isOn ? logLevelBit(level) : 0u; };
  add(pars.mIsWarning, LogLevel::kWarning);
  add(pars.mIsCreation, LogLevel::kCreation);
  add(pars.mIsTrace, LogLevel::kTrace);
  add(pars.mIsDevCom, LogLevel::kDevCom);
  add(pars.mIsIntCom, LogLevel::kIntCom);
  add(pars.mIsInfo, LogLevel::kInfo);
  add(pars.mIsDebug, LogLevel::kDebug);
  add(pars.mIsTmp, LogLevel::kTmp);
  return mask;
}
