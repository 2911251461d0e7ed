// What the log does when there is no memory.
#include "tests/logging/log_fixture.h"
#include "tests/support/allocations.h"

#include <gtest/gtest.h>

namespace {

using LogWithoutMemory = LogTest;

void log(const char* textP) {
  LM_LOG(kInfo, "A", "A::b") << textP;
}

TEST_F(LogWithoutMemory, LogLosesNoEntryToABackupThatFindsNoMemory) {
  bool isComplete = false;
  for (int left = 0; !isComplete; ++left) {
    ASSERT_LT(left, 100) << "the backup has never been made";
    mPars.mLogFile = mFolder.path("file" + std::to_string(left) + ".log");
    init();
    log("before");
    {
      const tests::MemoryRunsOut memoryRunsOut(left);
      isComplete = mLog.backupLogFile() == 0;
    }
    log("after");
    const std::string name = "file" + std::to_string(left);
    const std::string text = mFolder.read(name + ".bak") + mFolder.read(name + ".log");
    EXPECT_NE(text.find("| before\n"), std::string::npos) << left;
    EXPECT_NE(text.find("| after\n"), std::string::npos) << left;
  }
}

TEST_F(LogWithoutMemory, LogWritesOnIntoAFileThatIsDueForABackup) {
  mPars.mMaxSize = 1;
  init();
  log(std::string(1000, 'x').c_str());
  {
    const tests::MemoryRunsOut memoryRunsOut(0);
    log("during");
    EXPECT_EQ(mLog.backupLogFile(), -3);
  }
  EXPECT_EQ(texts().back(), "during");
  log("after");
  EXPECT_TRUE(mFolder.has("a.bak"));
  EXPECT_EQ(texts().back(), "after");
}

/// The process that has not noticed writes into the backup; that must not be the end of its log.
TEST_F(LogWithoutMemory, LogFollowsToTheNewFileAsSoonAsThereIsMemory) {
  for (std::uint64_t left = 0; left < 4; ++left) {
    const std::string name = "file" + std::to_string(left);
    RotatingLogFile one(makeLogFile), other(makeLogFile);
    one.open(mFolder.path(name + ".log"), name, 1000);
    other.open(mFolder.path(name + ".log"), name, 1000);
    ASSERT_EQ(one.rotate(), RotatingLogFile::Rotation::kDone);
    {
      const tests::MemoryRunsOut memoryRunsOut(left);
      other.prepare(1000);
      other.write("during\n");
    }
    other.prepare(2000);
    other.write("after\n");
    const std::string text = mFolder.read(name + ".log");
    EXPECT_NE(text.find("after\n"), std::string::npos) << left;
    EXPECT_NE((mFolder.read(name + ".bak") + text).find("during\n"), std::string::npos) << left;
  }
}

/// Only the name that the backup has for a moment is long enough to find no memory.
TEST_F(LogWithoutMemory, LogKeepsTheLineAfterARotationThatFindsNoMemoryMidway) {
  for (std::uint64_t left = 0; left < 10; ++left) {
    const std::string name = "file" + std::to_string(left);
    const std::string path = mFolder.path(name + ".log");
    RotatingLogFile log(makeLogFile);
    log.open(path, name, 1000);
    log.write(std::string(1000, 'x') + "\n");
    {
      const tests::MemoryRunsOut memoryRunsOut(left, path.size() + 2);
      log.prepare(1000);
      log.write("during\n");
    }
    const std::string text = mFolder.read(name + ".bak") + mFolder.read(name + ".log");
    EXPECT_NE(text.find("during\n"), std::string::npos) << left;
  }
}

}  // namespace
