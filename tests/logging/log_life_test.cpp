#include "tests/logging/log_fixture.h"
#include "tests/support/refusing_file.h"

#include <gmock/gmock.h>

#include <optional>
#include <regex>

namespace {

using testing::ElementsAre;

class FailedMaker {
 public:
  static std::unique_ptr<LogFile> make() { return nullptr; }
};

TEST_F(LogTest, LogBeginsWithTheHeaderBlock) {
  init();
  EXPECT_EQ(file(), headerOf(mPars.mLogFile) + "\n");
}

TEST_F(LogTest, TheDateIsTheDayWithoutATime) {
  EXPECT_TRUE(
      std::regex_match(Util::localDate(), std::regex("[A-Z][a-z][a-z] [A-Z][a-z][a-z] [ 1-3]\\d \\d{4}")));
}

TEST_F(LogTest, LogIsAppendedToWhatTheFileHolds) {
  mFolder.write("a.log", "earlier\n");
  init();
  EXPECT_EQ(file(), "earlier\n" + headerOf(mPars.mLogFile) + "\n");
}

TEST_F(LogTest, ANameWithoutABackslashLandsInTheDirectory) {
  mLog.setDirectory(mFolder.path("").substr(0, mFolder.path("").size() - 1));
  mPars.mLogFile = "b.log";
  init();
  EXPECT_EQ(mFolder.read("b.log"), headerOf("b.log") + "\n");
}

TEST_F(LogTest, ADirectoryAmongTheParametersIsTaken) {
  mLog.setDirectory("\\nowhere");
  mPars.mSettingsDirPath = mFolder.path("").substr(0, mFolder.path("").size() - 1);
  mPars.mLogFile = "b.log";
  init();
  EXPECT_TRUE(mFolder.has("b.log"));
}

TEST_F(LogTest, ANameWithABackslashIsAFullPath) {
  mLog.setDirectory("\\nowhere");
  init();
  EXPECT_TRUE(mFolder.has("a.log"));
}

TEST_F(LogTest, AnEmptyNameIsReplaced) {
  mLog.setDirectory(mFolder.path("").substr(0, mFolder.path("").size() - 1));
  mPars.mLogFile = "";
  init();
  EXPECT_EQ(mFolder.read("forgot_to_name_this_file_log.txt"),
            headerOf("forgot_to_name_this_file_log.txt") + "\n");
}

TEST_F(LogTest, WithoutAFileNothingIsOpened) {
  mPars.mIsLogToFile = false;
  init();
  LM_LOG(kError, "A", "A::b") << "text";
  EXPECT_FALSE(mFolder.has("a.log"));
}

TEST_F(LogTest, ConsoleLogWritesHeaderAndEntriesToStandardOutput) {
  mPars.mIsLogToCnsl = true;
  testing::internal::CaptureStdout();
  init();
  LM_LOG(kInfo, "A", "A::b") << "text";
  EXPECT_EQ(testing::internal::GetCapturedStdout(), file());
  EXPECT_THAT(texts(), ElementsAre("text"));
}

TEST_F(LogTest, LogToTheConsoleAloneHasNoHeader) {
  mPars.mIsLogToCnsl = true;
  mPars.mIsLogToFile = false;
  testing::internal::CaptureStdout();
  init();
  LM_LOG(kInfo, "A", "A::b") << "text";
  EXPECT_EQ(testing::internal::GetCapturedStdout().substr(kPrefixWidth), "text\n");
}

TEST_F(LogTest, ASecondInitClosesTheFirstFile) {
  init();
  mPars.mLogFile = mFolder.path("b.log");
  init();
  LM_LOG(kInfo, "A", "A::b") << "text";
  EXPECT_EQ(file(), headerOf(mFolder.path("a.log")) + "\n");
}

TEST_F(LogTest, AFileThatCannotBeOpenedLosesItsEntriesSilently) {
  mPars.mLogFile = mFolder.path("none\\a.log");
  testing::internal::CaptureStdout();
  init();
  LM_LOG(kError, "A", "A::b") << "text";
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_FALSE(mFolder.has("none"));
}

TEST_F(LogTest, AFolderInThePlaceOfTheFileLosesTheEntriesSilently) {
  std::filesystem::create_directory(mFolder.root() / "a.log");
  init();
  LM_LOG(kError, "A", "A::b") << "text";
  EXPECT_TRUE(std::filesystem::is_empty(mFolder.root() / "a.log"));
}

TEST_F(LogTest, AFileThatTakesNothingLosesTheEntriesSilently) {
  RefusingFile refusing;
  mPars.mLogFile = refusing.path();
  mPars.mIsLogToCnsl = true;
  testing::internal::CaptureStdout();
  init();
  refusing.refuse();
  LM_LOG(kError, "A", "A::b") << "text";
  LM_LOG(kError, "A", "A::b") << "more";
  const std::vector<std::string> lines = linesOf(testing::internal::GetCapturedStdout());
  ASSERT_EQ(lines.size(), 7u);
  EXPECT_EQ(lines[5].substr(kPrefixWidth), "text");
  EXPECT_EQ(lines[6].substr(kPrefixWidth), "more");
}

TEST(LogLife, AFileThatCannotBeMadeIsReportedAndNotUsed) {
  Logging log(&FailedMaker::make);
  LogPars pars;
  pars.mLogFile = "x.log";
  pars.mIsLogToCnsl = true;
  pars.mIsCreation = false;
  testing::internal::CaptureStdout();
  log.init(pars);
  LM_LOG(kError, "A", "A::b") << "next";
  const std::vector<std::string> lines = linesOf(testing::internal::GetCapturedStdout());
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].substr(12, 5), "|ERR|");
  EXPECT_EQ(lines[0].substr(kPrefixWidth), "Opening log file 'x.logfailed!");
  EXPECT_EQ(lines[1].substr(kPrefixWidth), "next");
}

TEST(LogLife, AFileThatCannotBeMadeGetsNoBackup) {
  Logging log(&FailedMaker::make);
  LogPars pars;
  pars.mLogFile = "x.log";
  log.init(pars);
  EXPECT_EQ(log.backupLogFile(), -1);
}

TEST(LogLife, ErrorsOfTheLogNameTheOperation) {
  Logging log(&FailedMaker::make);
  LogPars pars;
  pars.mLogFile = "x.log";
  pars.mIsLogToCnsl = true;
  testing::internal::CaptureStdout();
  log.init(pars);
  const std::string line = testing::internal::GetCapturedStdout();
  EXPECT_EQ(line.substr(fileStart(currentThreadId()), 18), "     logging.cpp| ");
  EXPECT_EQ(line.substr(kPrefixWidth - 34, 32), "Logging::Logging::init          ");
}

TEST(LogLife, ErrorsOfTheLogAreLeftOutWhenAnotherFileIsToBeLogged) {
  Logging log(&FailedMaker::make);
  LogPars pars;
  pars.mIsLogToCnsl = true;
  pars.mExclFileToLog = "other.cpp";
  testing::internal::CaptureStdout();
  log.init(pars);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(LogLife, WithoutALogNothingIsDone) {
  std::optional<Logging> log(std::in_place);
  log.reset();
  EXPECT_EQ(Logging::current(), nullptr);
  EXPECT_FALSE(Logging::isLogged(LogLevel::kError));
  int evaluated = 0;
  LM_LOG(kError, "A", "A::b") << ++evaluated;
  EXPECT_EQ(evaluated, 0);
}

TEST(LogLife, ANewLogReportsItsConstructionInTheOneBefore) {
  const TempFolder folder;
  Logging first;
  LogPars pars;
  pars.mLogFile = folder.path("a.log");
  first.init(pars);
  const Logging second;
  const std::vector<std::string> lines = linesOf(folder.read("a.log"));
  ASSERT_EQ(lines.size(), 7u);
  EXPECT_EQ(lines[6].substr(12, 5), "|CRT|");
  EXPECT_EQ(lines[6].substr(kPrefixWidth), "Logging::Logging() constructing ...");
}

TEST(LogLife, OfTheTwoTextsOfDestructionTheFirstIsWritten) {
  const TempFolder folder;
  {
    Logging log;
    LogPars pars;
    pars.mLogFile = folder.path("a.log");
    log.init(pars);
  }
  const std::vector<std::string> lines = linesOf(folder.read("a.log"));
  ASSERT_EQ(lines.size(), 7u);
  EXPECT_EQ(lines[6].substr(kPrefixWidth), "Logging::~Logging(): destructing ...");
}

}  // namespace
