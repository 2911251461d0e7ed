/// What the log can be told to do: where it writes, how much, and which levels. Filled from the settings
/// file.
#ifndef LM_DAEMON_SRC_LOG_PARS_H
#define LM_DAEMON_SRC_LOG_PARS_H

#include <cstdint>
#include <string>

struct LogPars {
  std::string mSectionName = "LOGGING";            ///< section of the settings file that holds these values
  std::string mSettingsDirPath;                    ///< folder of a log file that is named without a backslash
  std::string mLogFile = "autocad_addin_log.txt";  ///< name or full path of the log file
  std::int32_t mMaxSize = 5000;                    ///< size limit in kilobytes of 1000 bytes
  bool mIsLogToFile = true;
  bool mIsLogToCnsl = false;  ///< to standard output
  bool mIsWarning = false;
  bool mIsCreation = true;
  bool mIsTrace = false;
  bool mIsDevCom = false;
  bool mIsIntCom = false;
  bool mIsInfo = true;
  bool mIsDebug = false;
  bool mIsTmp = false;
  std::string mExclFileToLog;  ///< when not empty, the only source file whose entries are written

  /// The values as text for the log, one line each.
  std::string dump() const;
};

#endif
