#include "LM_Daemon/src/log_pars.h"

#include "util/util.h"

std::string LogPars::dump() const {
  std::string text;
  const auto line = [&text](const char* label, const std::string& value) {
    text.append("    ").append(label).append(value).append("\n");
  };
  line("    mSectionName: ", mSectionName);
  line("mSettingsDirPath: ", mSettingsDirPath);
  line("        mLogFile: ", mLogFile);
  line("        mMaxSize: ", std::to_string(mMaxSize));
  line("    mIsLogToFile: ", Util::boolToOnOff(mIsLogToFile));
  line("    mIsLogToCnsl: ", Util::boolToOnOff(mIsLogToCnsl));
  line("      mIsWarning: ", Util::boolToOnOff(mIsWarning));
  line("     mIsCreation: ", Util::boolToOnOff(mIsCreation));
  line("        mIsTrace: ", Util::boolToOnOff(mIsTrace));
  line("       mIsDevCom: ", Util::boolToOnOff(mIsDevCom));
  line("       mIsIntCom: ", Util::boolToOnOff(mIsIntCom));
  line("         mIsInfo: ", Util::boolToOnOff(mIsInfo));
  line("        mIsDebug: ", Util::boolToOnOff(mIsDebug));
  line("          mIsTmp: ", Util::boolToOnOff(mIsTmp));
  line("  mExclFileToLog: ", mExclFileToLog);
  return text;
}
