#include "LM_Daemon/src/log_position.h"
#include "tests/logging/log_fixture.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

struct LevelCase {
  LogLevel level;
  const char* typeP;
  bool LogPars::*switchP;
};

class LogLevels : public LogTest, public testing::WithParamInterface<LevelCase> {
 protected:
  LogLevels() {
    mPars.mIsInfo = false;
    init();
  }

  void log(LogLevel level) { LogEntry(level, "a.cpp", LM_LOG_POSITION("A", "A::b")) << "text"; }
};

TEST_P(LogLevels, LevelIsWrittenWhenItsSwitchIsOn) {
  mPars.*GetParam().switchP = true;
  init();
  for (int level = 1; level <= 9; ++level) log(static_cast<LogLevel>(level));
  const std::vector<std::string> lines = linesOf(file());
  ASSERT_EQ(lines.size(), 5u + 5u + 1u);
  EXPECT_EQ(lines.back().substr(12, 5), "|" + std::string(GetParam().typeP) + "|");
}

INSTANTIATE_TEST_SUITE_P(All, LogLevels,
                         testing::Values(LevelCase{LogLevel::kWarning, "WRN", &LogPars::mIsWarning},
                                         LevelCase{LogLevel::kCreation, "CRT", &LogPars::mIsCreation},
                                         LevelCase{LogLevel::kTrace, "TRC", &LogPars::mIsTrace},
                                         LevelCase{LogLevel::kDevCom, "DCM", &LogPars::mIsDevCom},
                                         LevelCase{LogLevel::kIntCom, "ICM", &LogPars::mIsIntCom},
                                         LevelCase{LogLevel::kInfo, "INF", &LogPars::mIsInfo},
                                         LevelCase{LogLevel::kDebug, "DBG", &LogPars::mIsDebug},
                                         LevelCase{LogLevel::kTmp, "TMP", &LogPars::mIsTmp}),
                         [](const auto& testCase) { return std::string(testCase.param.typeP); });

TEST_F(LogTest, AnErrorIsWrittenWhenEverySwitchIsOff) {
  mPars.mIsInfo = false;
  init();
  LM_LOG(kError, "A", "A::b") << "text";
  ASSERT_EQ(entries().size(), 1u);
  EXPECT_EQ(entries()[0].substr(12, 5), "|ERR|");
}

TEST_F(LogTest, ALevelAboveEightIsNeverWritten) {
  init();
  for (const int level : {9, 31, 32, 1000, -1}) {
    EXPECT_FALSE(mLog.openEntry(static_cast<LogLevel>(level), "a.cpp", "")) << level;
    EXPECT_STREQ(logLevelType(static_cast<LogLevel>(level)), "???");
  }
}

TEST_F(LogTest, AFileToLogSuppressesOtherFilesErrorsIncluded) {
  mPars.mExclFileToLog = "other.cpp";
  init();
  LM_LOG(kError, "A", "A::b") << "text";
  EXPECT_THAT(texts(), ElementsAre());
}

TEST_F(LogTest, AFileToLogIsComparedWithTheBaseNameOfTheSource) {
  mPars.mExclFileToLog = "a.cpp";
  init();
  const auto isWritten = [this](std::string_view source) {
    const bool isOpen = mLog.openEntry(LogLevel::kError, source, "");
    mLog << 314159;
    return isOpen;
  };
  EXPECT_TRUE(isWritten("a.cpp"));
  EXPECT_TRUE(isWritten("c:\\src\\a.cpp"));
  EXPECT_TRUE(isWritten("src/a.cpp"));
  EXPECT_FALSE(isWritten("src/x\\a.cpp")) << "after a slash a backslash is part of the name";
  EXPECT_FALSE(isWritten("A.cpp"));
  EXPECT_FALSE(isWritten("xa.cpp"));
}

TEST_F(LogTest, AFileToLogShowsTheMacrosOwnSource) {
  mPars.mExclFileToLog = "log_level_test.cpp";
  init();
  LM_LOG(kInfo, "A", "A::b") << "text";
  EXPECT_THAT(texts(), ElementsAre("text"));
}

}  // namespace
