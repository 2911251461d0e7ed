/// The parameters of the log: where it writes, how much, and which levels. Filled from the settings file.
#ifndef LM_DAEMON_SRC_LOG_PARS_H
#define LM_DAEMON_SRC_LOG_PARS_H

#include <cstdint>
#include <string>

/// The log's settings, one row each, in the order of their lines in the settings file: type, field, key,
/// default, usable numbers (a UsableNumbers), comment in the file. The size limit is in kilobytes of 1000
/// bytes. When `mExclFileToLog` is not empty, only the entries of that source file are written.
#define LM_LOG_SETTINGS(X)                                                                   \
  X(std::string, mLogFile, logFile, "autocad_addin_log.txt", kAny, "# name of log file")     \
  X(std::int32_t, mMaxSize, maxSize, 5000, kPositive, "# max. size of log file (kB)")        \
  X(bool, mIsLogToFile, logToFile, true, kAny, "# log into log file:               off/on")  \
  X(bool, mIsLogToCnsl, logToCnsl, false, kAny, "# log to console:                  off/on") \
  X(bool, mIsWarning, warning, false, kAny, "# log warnings:                    off/on")     \
  X(bool, mIsCreation, creation, true, kAny, "# log creation etc.:               off/on")    \
  X(bool, mIsTrace, trace, false, kAny, "# log trace data:                  off/on")         \
  X(bool, mIsDevCom, devcom, false, kAny, "# not used in this plug-in")                      \
  X(bool, mIsIntCom, intcom, false, kAny, "# log internal communication data: off/on")       \
  X(bool, mIsInfo, info, true, kAny, "# log info data:                   off/on")            \
  X(bool, mIsDebug, debug, false, kAny, "# log debug data:                  off/on")         \
  X(bool, mIsTmp, tmp, false, kAny, "# log data of temporal interest:   off/on")             \
  X(std::string, mExclFileToLog, fileToLog, "", kAny, "# name of the exclusively logged file")

struct LogPars {
  std::string mSectionName = "LOGGING";  ///< section of the settings file that holds these values
  std::string mSettingsDirPath;          ///< folder of a log file that is named without a backslash
#define LM_DECLARE_FIELD(type, field, key, defaultValue, usable, comment) type field = defaultValue;
  LM_LOG_SETTINGS(LM_DECLARE_FIELD)  // NOLINT(readability-redundant-string-init): a row has a default
#undef LM_DECLARE_FIELD

  /// The values as text for the log, one line each.
  std::string dump() const;
};

#endif
