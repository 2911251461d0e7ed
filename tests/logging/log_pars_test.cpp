#include "LM_Daemon/src/log_pars.h"

#include <gtest/gtest.h>

namespace {

TEST(LogPars, DumpItsFieldsInOrder) {
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

}  // namespace
