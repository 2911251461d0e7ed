// What one entry leaves to the next, to those that are open around it, and to other threads.
#include "tests/logging/log_fixture.h"

#include <gmock/gmock.h>

#include <ios>
#include <thread>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

using LogEntryStates = LogTest;

std::string number(int value) {
  LM_LOG(kInfo, "A", "A::inner") << value;
  return "x";
}

TEST_F(LogEntryStates, HexDumpThatHadNoTextIsNotThatOfTheNextEntry) {
  init();
  LM_LOG(kInfo, "A", "A::b") << "first" << Logging::kHexDumpNext;
  LM_LOG(kInfo, "A", "A::b") << "second";
  EXPECT_THAT(texts(), ElementsAre("first", "second"));
}

TEST_F(LogEntryStates, InnerEntryIsDecimalAndLeavesTheOuterHexadecimal) {
  init();
  LM_LOG(kInfo, "A", "A::b") << std::hex << 255 << number(255) << 254;
  EXPECT_THAT(texts(), ElementsAre("255", "ffxfe"));
}

TEST_F(LogEntryStates, OtherManipulatorsDoNotChangeTheBase) {
  init();
  LM_LOG(kInfo, "A", "A::b") << std::uppercase << 255 << std::hex << std::boolalpha << 255 << std::dec
                             << std::showbase << 255;
  EXPECT_THAT(texts(), ElementsAre("255ff255"));
}

TEST_F(LogEntryStates, SwitchesAreOneAndZero) {
  init();
  LM_LOG(kInfo, "A", "A::b") << true << false;
  EXPECT_THAT(texts(), ElementsAre("10"));
}

TEST_F(LogEntryStates, PiecesOfOtherThreadsAreDropped) {
  init();
  LogEntry entry(LogLevel::kInfo, "a.cpp", LM_LOG_POSITION("A", "A::b"));
  entry << "mine";
  std::thread([this] { mLog << " not mine"; }).join();
  entry.close();
  EXPECT_THAT(texts(), ElementsAre("mine"));
}

TEST_F(LogEntryStates, PieceWithoutAnEntryIsDropped) {
  init();
  mLog << "nobody's";
  LM_LOG(kInfo, "A", "A::b") << "mine";
  EXPECT_THAT(texts(), ElementsAre("mine"));
}

TEST_F(LogEntryStates, EntryOfASourceThatIsNotWantedReleasesTheLock) {
  mPars.mExclFileToLog = "wanted.cpp";
  init();
  EXPECT_FALSE(mLog.openEntry(LogLevel::kInfo, "other.cpp", LM_LOG_POSITION("A", "A::b")));
  std::thread([] { LogEntry(LogLevel::kInfo, "wanted.cpp", LM_LOG_POSITION("A", "A::b")) << "text"; }).join();
  EXPECT_THAT(texts(), ElementsAre("text"));
}

TEST_F(LogEntryStates, NameOfASourceIsWhatFollowsTheLastSeparator) {
  EXPECT_EQ(sourceFileNameStart(std::string("a.cpp").c_str()), 0u);
  EXPECT_EQ(sourceFileNameStart(std::string("/a.cpp").c_str()), 1u);
  EXPECT_EQ(sourceFileNameStart(std::string("c:\\d/e\\a.cpp").c_str()), 7u);
  EXPECT_EQ(sourceFileNameStart(std::string("c:\\d\\e/a.cpp").c_str()), 7u);
  EXPECT_EQ(sourceFileNameStart(std::string("").c_str()), 0u);
}

/// A line from its level to the end of the method's name.
std::string levelAndMethod(const std::string& line) {
  const std::string method = line.substr(kPrefixWidth - 2 - 32, 32);
  return line.substr(13, 3) + " " + method.substr(0, method.find(' ')) + " " + line.substr(kPrefixWidth);
}

TEST_F(LogEntryStates, LogReportsItsOwnLifeWithLevelAndMethod) {
  mPars.mIsCreation = true;
  init();
  LogPars pars = mPars;
  pars.mLogFile = mFolder.path("b.log");
  {
    Logging log;
    log.init(pars);
  }
  EXPECT_EQ(levelAndMethod(entries().back()),
            "CRT Logging::Logging::Logging Logging::Logging() constructing ...");
  std::vector<std::string> lines = linesOf(mFolder.read("b.log"));
  ASSERT_EQ(lines.size(), 7u);
  EXPECT_EQ(levelAndMethod(lines[5]), "CRT Logging::Logging::Logging Constructed.");
  EXPECT_EQ(levelAndMethod(lines[6]), "CRT Logging::Logging::~Logging Logging::~Logging(): destructing ...");
}

TEST_F(LogEntryStates, ConsoleShowsTheHeaderOfTheFileAfterABackup) {
  init();
  mPars.mIsLogToCnsl = true;
  testing::internal::CaptureStdout();
  init();
  testing::internal::GetCapturedStdout();
  testing::internal::CaptureStdout();
  EXPECT_EQ(mLog.backupLogFile(), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), headerOf(mPars.mLogFile) + "\n");
}

TEST_F(LogEntryStates, BackupThatAnotherProcessHasJustMadeIsSuccess) {
  init();
  std::filesystem::rename(mFolder / "a.log", mFolder / "a.bak");
  mFolder.write("a.log", "new\n");
  EXPECT_EQ(mLog.backupLogFile(), 0);
  LM_LOG(kInfo, "A", "A::b") << "text";
  EXPECT_THAT(file(), HasSubstr("| text\n"));
  EXPECT_THAT(mFolder.read("a.bak"), Not(HasSubstr("new")));
}

}  // namespace
