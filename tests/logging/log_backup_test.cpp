#include "tests/logging/log_fixture.h"

#include <gmock/gmock.h>
#ifdef _WIN32
#include <windows.h>
#endif

#include <cerrno>
#include <filesystem>
#include <string_view>

// How a log is kept from being renamed; root has the right to that in every folder.
#ifdef _WIN32

namespace {

/// While it lives, another program has the log open and shares it for reading and writing alone.
class RenamesFail {
 public:
  explicit RenamesFail(const std::filesystem::path& log)
      : mFile(CreateFileW(log.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                          OPEN_EXISTING, 0, nullptr)) {}
  ~RenamesFail() { CloseHandle(mFile); }

 private:
  const HANDLE mFile;
};

}  // namespace

#else

namespace {

bool isRenameDenied = false;

/// While it lives, no log can be renamed.
class RenamesFail {
 public:
  explicit RenamesFail(const std::filesystem::path& /*log*/) { isRenameDenied = true; }
  ~RenamesFail() { isRenameDenied = false; }
};

}  // namespace

// The linker gives the module these instead of the library's (option --wrap).
extern "C" int __real_rename(const char* fromP, const char* toP);
extern "C" int __wrap_rename(const char* fromP, const char* toP) {
  const std::string_view from = fromP;
  const bool isLog = from.size() > 4 && from.substr(from.size() - 4) == ".log";
  if (!isRenameDenied || !isLog) return __real_rename(fromP, toP);
  errno = EACCES;
  return -1;
}

#endif

namespace {

using testing::ElementsAre;

class LogBackups : public LogTest {
 protected:
  LogBackups() {
    mPars.mMaxSize = 1;
    init();
  }

  void log(const std::string& text) { LM_LOG(kInfo, "A", "A::b") << text; }
  void fill() { log(std::string(1000, 'x')); }
  std::string backup() const { return mFolder.read("a.bak"); }
  void blockBackup() { std::filesystem::create_directory(mFolder.root() / "a.bak"); }
};

TEST_F(LogBackups, BackupIsMadeAsSoonAsTheFileHoldsTheLimit) {
  const std::size_t header = file().size();
  log(std::string(1000 - header - kPrefixWidth - 1 - 1, 'x'));
  log("at 999");
  EXPECT_FALSE(mFolder.has("a.bak"));
  log("new file");
  EXPECT_EQ(linesOf(backup()).back().substr(kPrefixWidth), "at 999");
  EXPECT_EQ(file().substr(0, header), headerOf(mPars.mLogFile) + "\n");
  EXPECT_THAT(texts(), ElementsAre("new file"));
}

TEST_F(LogBackups, BackupIsMadeAtExactlyTheLimit) {
  log(std::string(1000 - file().size() - kPrefixWidth - 1, 'x'));
  ASSERT_EQ(file().size(), 1000u);
  log("new file");
  EXPECT_EQ(backup().size(), 1000u);
  EXPECT_THAT(texts(), ElementsAre("new file"));
}

TEST_F(LogBackups, BackupsKeepOneGeneration) {
  fill();
  log("second");
  fill();
  log("third");
  EXPECT_EQ(linesOf(backup())[5].substr(kPrefixWidth), "second");
  EXPECT_THAT(texts(), ElementsAre("third"));
}

TEST_F(LogBackups, BackupIsMadeOfAFileThatWasTooLargeBefore) {
  mFolder.write("a.log", std::string(2000, 'z') + "\n");
  init();
  log("new");
  EXPECT_EQ(backup().substr(0, 2000), std::string(2000, 'z'));
  EXPECT_THAT(texts(), ElementsAre("new"));
}

TEST_F(LogBackups, BackupIsMadeOnDemand) {
  log("text");
  const std::string before = file();
  EXPECT_EQ(mLog.backupLogFile(), 0);
  EXPECT_EQ(backup(), before);
  EXPECT_EQ(file(), headerOf(mPars.mLogFile) + "\n");
}

TEST_F(LogBackups, BackupNeedsAnOpenFile) {
  mPars.mIsLogToFile = false;
  init();
  EXPECT_EQ(mLog.backupLogFile(), -1);
}

TEST_F(LogBackups, BackupTakesThePathBeforeItsLastDot) {
  mPars.mLogFile = mFolder.path("b.x.log");
  init();
  mLog.backupLogFile();
  EXPECT_TRUE(mFolder.has("b.x.bak"));
}

TEST_F(LogBackups, BackupAppendsToAPathWithoutADot) {
  mPars.mLogFile = mFolder.path("b");
  init();
  mLog.backupLogFile();
  EXPECT_TRUE(mFolder.has("b.bak"));
}

TEST_F(LogBackups, BackupDoesNotRemoveALogOfTheSameName) {
  mPars.mLogFile = mFolder.path("b.bak");
  init();
  fill();
  log("next");
  log("after");
  const std::vector<std::string> lines = linesOf(mFolder.read("b.bak"));
  ASSERT_EQ(lines.size(), 5u + 1u + 5u + 2u) << "with a second header";
  EXPECT_EQ(lines[5].substr(kPrefixWidth), std::string(1000, 'x'));
  EXPECT_EQ(lines[12].substr(kPrefixWidth), "after");
  EXPECT_EQ(mLog.backupLogFile(), 0);
}

TEST_F(LogBackups, LimitOfNothingMakesABackupForEveryEntry) {
  mPars.mMaxSize = 0;
  init();
  log("first");
  log("second");
  EXPECT_EQ(linesOf(backup()).back().substr(kPrefixWidth), "first");
  EXPECT_THAT(texts(), ElementsAre("second"));
}

TEST_F(LogBackups, BackupThatCannotBeRemovedIsReportedAndNothingIsLost) {
  blockBackup();
  fill();
  log("next");
  log("after");
  const std::string message = "'" + mFolder.path("a.bak") + "' couldn't be removed!";
  EXPECT_THAT(texts(), ElementsAre(std::string(1000, 'x'), message, "next", "after"));
  EXPECT_EQ(entries()[1].substr(12, 5), "|ERR|");
  EXPECT_EQ(mLog.backupLogFile(), -2);
}

TEST_F(LogBackups, BackupThatCouldNotBeMadeIsTriedAgainAfterAsMuchAgain) {
  blockBackup();
  fill();
  fill();
  std::filesystem::remove(mFolder.root() / "a.bak");
  log("new");
  EXPECT_THAT(texts(), ElementsAre("new"));
  EXPECT_TRUE(mFolder.has("a.bak"));
}

TEST_F(LogBackups, BackupOfAFileThatIsGoneBeginsANewOne) {
  std::filesystem::remove(mFolder.root() / "a.log");
  EXPECT_EQ(mLog.backupLogFile(), 0);
  EXPECT_EQ(file(), headerOf(mPars.mLogFile) + "\n");
  EXPECT_FALSE(mFolder.has("a.bak"));
}

TEST_F(LogBackups, BackupThatCannotBeRenamedIsReportedOnStandardOutputAndNothingIsLost) {
  log("first");
  testing::internal::CaptureStdout();
  const RenamesFail renamesFail(mFolder / "a.log");
  const int code = mLog.backupLogFile();
  log("next");
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "File '" + mFolder.path("a.log") + "' couldn't be renamed to '" + mFolder.path("a.bak") + "'!\n");
  EXPECT_EQ(code, -3);
  EXPECT_THAT(texts(), ElementsAre("first", "next"));
}

TEST_F(LogBackups, BackupThatCannotBeReplacedIsKept) {
  log("first");
  ASSERT_EQ(mLog.backupLogFile(), 0);
  testing::internal::CaptureStdout();
  const RenamesFail renamesFail(mFolder / "a.log");
  EXPECT_EQ(mLog.backupLogFile(), -3);
  testing::internal::GetCapturedStdout();
  EXPECT_EQ(linesOf(backup()).back().substr(kPrefixWidth), "first");
}

/// Opens once and never again.
class OpensOnce : public LogFile {
 public:
  bool open(const std::string&) override { return mOpenings++ == 0; }
  void close() override {}
  void write(std::string_view) override {}
  std::int64_t position(bool) override { return 0; }
  bool hasItsName() override { return true; }
  bool isNamed(const std::string&) override { return true; }

 private:
  int mOpenings = 0;
};

TEST_F(LogBackups, BackupWhoseNewFileCannotBeOpenedIsReported) {
  Logging log([]() -> std::unique_ptr<LogFile> { return std::make_unique<OpensOnce>(); });
  mPars.mIsLogToCnsl = true;
  testing::internal::CaptureStdout();
  log.init(mPars);
  EXPECT_EQ(log.backupLogFile(), 0);
  const std::string output = testing::internal::GetCapturedStdout();
  const std::string message = output.substr(headerOf(mPars.mLogFile).size() + 1 + kPrefixWidth);
  EXPECT_EQ(message, "Opening of stream of'" + mPars.mLogFile + "' failed!\n\n");
}

TEST_F(LogBackups, BackupMayBeMadeByTheThreadThatHasAnEntryOpen) {
  LM_LOG(kInfo, "A", "A::b") << "result " << mLog.backupLogFile();
  EXPECT_THAT(texts(), ElementsAre("result 0"));
}

}  // namespace
