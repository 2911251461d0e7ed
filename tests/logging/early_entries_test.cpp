// What is logged before the log is opened.
#include "tests/logging/log_fixture.h"
#include "tests/support/allocations.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::SizeIs;

using EarlyLog = LogTest;

void log(LogLevel level, std::string_view text, std::string_view source = "a.cpp") {
  LogEntry(level, source, LM_LOG_POSITION("A", "A::b")) << text;
}

TEST_F(EarlyLog, InitWritesWhatWasLoggedBeforeAsTheFirstEntries) {
  log(LogLevel::kError, "first");
  log(LogLevel::kInfo, "second");
  init();
  log(LogLevel::kInfo, "third");
  EXPECT_THAT(texts(), ElementsAre("first", "second", "third"));
  EXPECT_EQ(entries()[0].substr(12, 5), "|ERR|");
  EXPECT_EQ(entries()[1].substr(12, 5), "|INF|");
}

TEST_F(EarlyLog, ParametersDecideOnTheLevelsOfWhatWasLoggedBefore) {
  log(LogLevel::kTrace, "wanted");
  log(LogLevel::kInfo, "not wanted");
  mPars.mIsTrace = true;
  mPars.mIsInfo = false;
  init();
  EXPECT_THAT(texts(), ElementsAre("wanted"));
}

TEST_F(EarlyLog, EntriesOfEveryLevelAreKeptUntilTheParametersDecide) {
  constexpr LogLevel kLevels[] = {LogLevel::kError, LogLevel::kWarning, LogLevel::kCreation,
                                  LogLevel::kTrace, LogLevel::kDevCom,  LogLevel::kIntCom,
                                  LogLevel::kInfo,  LogLevel::kDebug,   LogLevel::kTmp};
  for (const LogLevel level : kLevels) log(level, logLevelType(level));
  for (bool LogPars::*switchP :
       {&LogPars::mIsWarning, &LogPars::mIsCreation, &LogPars::mIsTrace, &LogPars::mIsDevCom,
        &LogPars::mIsIntCom, &LogPars::mIsInfo, &LogPars::mIsDebug, &LogPars::mIsTmp})
    mPars.*switchP = true;
  init();
  EXPECT_THAT(texts(),
              ElementsAre("Constructed.", "ERR", "WRN", "CRT", "TRC", "DCM", "ICM", "INF", "DBG", "TMP"));
}

TEST_F(EarlyLog, FileToLogLeavesOutWhatOtherSourcesLoggedBefore) {
  log(LogLevel::kError, "wanted", "src/a.cpp");
  log(LogLevel::kError, "not wanted", "src/b.cpp");
  mPars.mExclFileToLog = "a.cpp";
  init();
  EXPECT_THAT(texts(), ElementsAre("wanted"));
}

TEST_F(EarlyLog, SecondInitRepeatsNothing) {
  log(LogLevel::kError, "once");
  init();
  init();
  EXPECT_EQ(file().find("once"), file().rfind("once"));
}

TEST_F(EarlyLog, ConsoleGetsWhatWasLoggedBefore) {
  log(LogLevel::kError, "early");
  mPars.mIsLogToCnsl = true;
  mPars.mIsLogToFile = false;
  testing::internal::CaptureStdout();
  init();
  EXPECT_EQ(testing::internal::GetCapturedStdout().substr(kPrefixWidth), "early\n");
}

TEST_F(EarlyLog, MemoryOfEarlyEntriesIsBoundedAndKeepsTheFirst) {
  for (int i = 0; i < 10000; ++i) log(LogLevel::kInfo, "entry " + std::to_string(i));
  init();
  ASSERT_THAT(texts(), SizeIs(testing::AllOf(testing::Gt(100u), testing::Lt(300u))));
  EXPECT_EQ(texts()[0], "entry 0");
  EXPECT_EQ(texts()[99], "entry 99");
}

TEST_F(EarlyLog, LongEarlyEntryIsDroppedWholeAndShorterOnesFollow) {
  log(LogLevel::kInfo, "before");
  log(LogLevel::kInfo, std::string(100000, 'x'));
  log(LogLevel::kInfo, "after");
  init();
  EXPECT_THAT(texts(), ElementsAre("before", "after"));
}

TEST_F(EarlyLog, EntryThatFindsNoMemoryIsLeftOutAndTheNextIsWhole) {
  {
    const tests::MemoryRunsOut memoryRunsOut(0);
    log(LogLevel::kInfo, "lost");
  }
  log(LogLevel::kInfo, "kept");
  init();
  EXPECT_EQ(texts().back(), "kept");
}

}  // namespace
