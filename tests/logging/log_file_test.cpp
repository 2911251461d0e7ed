// The file that the log writes to, by itself.
#include "LM_Daemon/src/log_file.h"

#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

namespace {

class LogFiles : public testing::Test {
 protected:
  bool open(std::string_view name) { return mFileP->open(mFolder.path(name)); }

  TempFolder mFolder;
  std::unique_ptr<LogFile> mFileP = makeLogFile();
};

TEST_F(LogFiles, NewLogFileIsNotOpen) {
  mFileP->write("lost");
  EXPECT_EQ(mFileP->position(false), -1);
  EXPECT_EQ(mFileP->position(true), -1);
}

TEST_F(LogFiles, OpenedFileIsAtItsEnd) {
  mFolder.write("a.log", "12345");
  ASSERT_TRUE(open("a.log"));
  EXPECT_EQ(mFileP->position(false), 5);
  EXPECT_EQ(mFileP->position(true), 5);
}

TEST_F(LogFiles, TrackedPositionCountsOwnWritesAndTheExactOneAlsoThoseOfOthers) {
  ASSERT_TRUE(open("a.log"));
  const std::unique_ptr<LogFile> otherP = makeLogFile();
  ASSERT_TRUE(otherP->open(mFolder.path("a.log")));
  mFileP->write("123");
  otherP->write("4567");
  mFileP->write("89");
  EXPECT_EQ(mFileP->position(false), 5);
  EXPECT_EQ(mFileP->position(true), 9);
  EXPECT_EQ(mFileP->position(false), 9) << "what the system said is kept";
}

TEST_F(LogFiles, ClosedFileDropsWhatIsWritten) {
  ASSERT_TRUE(open("a.log"));
  mFileP->write("kept");
  mFileP->close();
  mFileP->write("lost");
  EXPECT_EQ(mFileP->position(false), -1);
  EXPECT_EQ(mFileP->position(true), -1);
  EXPECT_EQ(mFolder.read("a.log"), "kept");
}

TEST_F(LogFiles, FileThatCannotBeOpenedHasFailedUntilTheNextOpening) {
  EXPECT_FALSE(open("missing\\a.log"));
  mFileP->write("lost");
  EXPECT_EQ(mFileP->position(false), -1);
  EXPECT_EQ(mFileP->position(true), -1);
  ASSERT_TRUE(open("a.log"));
  mFileP->write("kept");
  EXPECT_EQ(mFileP->position(false), 4);
  EXPECT_EQ(mFolder.read("a.log"), "kept");
}

TEST_F(LogFiles, OpenFileKnowsWhichNameLeadsToIt) {
  ASSERT_TRUE(open("a.log"));
  mFolder.write("b.log", "");
  EXPECT_TRUE(mFileP->hasItsName());
  EXPECT_TRUE(mFileP->isNamed(mFolder.path("a.log")));
  EXPECT_FALSE(mFileP->isNamed(mFolder.path("b.log")));
  EXPECT_FALSE(mFileP->isNamed(mFolder.path("none.log")));
}

}  // namespace
