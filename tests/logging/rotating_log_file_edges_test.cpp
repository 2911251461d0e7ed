// When the log of a process looks at its file, and what it does with what it finds. Each object stands for
// the log of one process.
#include "LM_Daemon/src/log_header.h"
#include "LM_Daemon/src/rotating_log_file.h"
#include "tests/logging/log_fixture.h"

#include <gmock/gmock.h>

namespace {

using Rotation = RotatingLogFile::Rotation;
using testing::HasSubstr;

constexpr std::int64_t kLimit = 1000;
constexpr std::uint32_t kCheckMs = RotatingLogFile::kCheckMs;

class RotatingLogs : public testing::Test {
 protected:
  RotatingLogs() {
    for (RotatingLogFile* const logP : {&mOne, &mOther})
      EXPECT_TRUE(logP->open(mFolder.path("a.log"), "a.log", kLimit));
  }

  std::string log() const { return mFolder.read("a.log"); }
  std::string backup() const { return mFolder.read("a.bak"); }
  std::vector<std::string> names() const {
    std::vector<std::string> result;
    for (const auto& entry : std::filesystem::directory_iterator(mFolder.root()))
      result.push_back(entry.path().filename().string());
    return result;
  }

  TempFolder mFolder;
  RotatingLogFile mOne{makeLogFile};
  RotatingLogFile mOther{makeLogFile};
};

TEST_F(RotatingLogs, NameIsCheckedAsSoonAsTheTimeIsUp) {
  EXPECT_EQ(mOne.rotate(), Rotation::kDone);
  EXPECT_EQ(mOther.prepare(kCheckMs - 1), Rotation::kNone);
  mOther.write("early\n");
  EXPECT_THAT(backup(), HasSubstr("early\n"));
  EXPECT_EQ(mOther.prepare(kCheckMs), Rotation::kNone);
  mOther.write("late\n");
  EXPECT_EQ(log(), logHeader("a.log") + "late\n");
}

TEST_F(RotatingLogs, TimeToTheNextCheckCountsFromTheLast) {
  EXPECT_EQ(mOther.prepare(10 * kCheckMs), Rotation::kNone);
  EXPECT_EQ(mOne.rotate(), Rotation::kDone);
  EXPECT_EQ(mOther.prepare(11 * kCheckMs - 1), Rotation::kNone);
  mOther.write("early\n");
  EXPECT_THAT(backup(), HasSubstr("early\n"));
}

TEST_F(RotatingLogs, CheckIsDueAfterMidnight) {
  EXPECT_EQ(mOther.prepare(10 * kCheckMs), Rotation::kNone);
  EXPECT_EQ(mOne.rotate(), Rotation::kDone);
  EXPECT_EQ(mOther.prepare(1), Rotation::kNone);
  mOther.write("late\n");
  EXPECT_EQ(log(), logHeader("a.log") + "late\n");
}

TEST_F(RotatingLogs, RotationOfAnotherProcessCountsAsTheOwn) {
  mOther.write("before\n");
  EXPECT_EQ(mOne.rotate(), Rotation::kDone);
  EXPECT_EQ(mOther.rotate(), Rotation::kNone);
  mOther.write("next\n");
  EXPECT_EQ(log(), logHeader("a.log") + "next\n");
  EXPECT_THAT(backup(), HasSubstr("before\n"));
}

TEST_F(RotatingLogs, LineThatACheckHasConfirmedIsNotWrittenAgain) {
  mOther.write("confirmed\n");
  EXPECT_EQ(mOther.prepare(kCheckMs), Rotation::kNone);
  EXPECT_EQ(mOne.rotate(), Rotation::kDone);
  EXPECT_EQ(mOne.rotate(), Rotation::kDone);
  mOther.write("late\n");
  EXPECT_EQ(mOther.prepare(2 * kCheckMs), Rotation::kNone);
  EXPECT_EQ(log(), logHeader("a.log") + "late\n");
}

TEST_F(RotatingLogs, LineBeforeARotationIsNotWrittenAgain) {
  mOther.write("confirmed\n");
  EXPECT_EQ(mOther.rotate(), Rotation::kDone);
  EXPECT_EQ(mOne.rotate(), Rotation::kNone);
  EXPECT_EQ(mOne.rotate(), Rotation::kDone);
  EXPECT_EQ(mOne.rotate(), Rotation::kDone);
  mOther.write("late\n");
  EXPECT_EQ(mOther.prepare(kCheckMs), Rotation::kNone);
  EXPECT_EQ(log(), logHeader("a.log") + "late\n");
}

TEST_F(RotatingLogs, LimitOfTheNewFileIsToTheByte) {
  EXPECT_EQ(mOne.rotate(), Rotation::kDone);
  const std::size_t room = kLimit - logHeader("a.log").size();
  mOne.write(std::string(room - 2, 'x') + "\n");
  EXPECT_EQ(mOne.prepare(1), Rotation::kNone);
  mOne.write("\n");
  EXPECT_EQ(mOne.prepare(2), Rotation::kDone);
}

TEST_F(RotatingLogs, NothingIsLeftBesideLogAndBackup) {
  for (int i = 0; i < 3; ++i) EXPECT_EQ(mOne.rotate(), Rotation::kDone);
  EXPECT_THAT(names(), testing::UnorderedElementsAre("a.log", "a.bak"));
}

TEST_F(RotatingLogs, FileThatCouldNotBeOpenedIsNotFollowed) {
  RotatingLogFile log(makeLogFile);
  EXPECT_TRUE(log.open(mFolder.path("later\\b.log"), "b.log", kLimit));
  std::filesystem::create_directory(mFolder / "later");
  mFolder.write("later/b.log", "of another\n");
  EXPECT_EQ(log.prepare(kCheckMs), Rotation::kNone);
  log.write("lost\n");
  EXPECT_EQ(mFolder.read("later/b.log"), "of another\n");
}

TEST_F(RotatingLogs, FileThatCouldNotBeOpenedIsNeverFull) {
  RotatingLogFile log(makeLogFile);
  EXPECT_TRUE(log.open(mFolder.path("missing\\b.log"), "b.log", -1000));
  EXPECT_EQ(log.prepare(kCheckMs), Rotation::kNone);
}

TEST_F(RotatingLogs, LogIsClosedUntilItIsOpenedAgain) {
  mOne.close();
  EXPECT_FALSE(mOne.isOpen());
  EXPECT_TRUE(mOne.open(mFolder.path("b.log"), "b.log", kLimit));
  mOne.write("b\n");
  EXPECT_EQ(mFolder.read("b.log"), logHeader("b.log") + "b\n");
}

}  // namespace
