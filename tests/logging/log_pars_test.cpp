#include "LM_Daemon/src/log_pars.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(LogPars, DumpShowsTheFieldsInOrder) {
  LogPars pars;
  pars.mSettingsDirPath = "c:\\p";
  pars.mExclFileToLog = "a.cpp";
  EXPECT_EQ(pars.dump(),
            "        mSectionName: LOGGING\n"
            "    mSettingsDirPath: c:\\p\n"
            "            mLogFile: autocad_addin_log.txt\n"
            "            mMaxSize: 5000\n"
            "        mIsLogToFile: on\n"
            "        mIsLogToCnsl: off\n"
            "          mIsWarning: off\n"
            "         mIsCreation: on\n"
            "            mIsTrace: off\n"
            "           mIsDevCom: off\n"
            "           mIsIntCom: off\n"
            "             mIsInfo: on\n"
            "            mIsDebug: off\n"
            "              mIsTmp: off\n"
            "      mExclFileToLog: a.cpp\n");
}

/// One switch that differs from the others, and the line of the dump that shows it.
struct SwitchCase {
  bool LogPars::*field;
  const char* line;
};

TEST(LogPars, DumpShowsEachSwitchInItsOwnLine) {
  const SwitchCase table[] = {
      {&LogPars::mIsLogToFile, "mIsLogToFile"}, {&LogPars::mIsLogToCnsl, "mIsLogToCnsl"},
      {&LogPars::mIsWarning, "mIsWarning"},     {&LogPars::mIsCreation, "mIsCreation"},
      {&LogPars::mIsTrace, "mIsTrace"},         {&LogPars::mIsDevCom, "mIsDevCom"},
      {&LogPars::mIsIntCom, "mIsIntCom"},       {&LogPars::mIsInfo, "mIsInfo"},
      {&LogPars::mIsDebug, "mIsDebug"},         {&LogPars::mIsTmp, "mIsTmp"}};
  for (const SwitchCase& tested : table) {
    LogPars pars;
    for (const SwitchCase& other : table) pars.*other.field = false;
    pars.*tested.field = true;
    const std::string dump = pars.dump();
    EXPECT_NE(dump.find(std::string(tested.line) + ": on\n"), std::string::npos) << tested.line;
    EXPECT_EQ(dump.find(": on\n"), dump.rfind(": on\n")) << "no other line shows it";
  }
}

}  // namespace
