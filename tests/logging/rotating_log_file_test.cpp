// One log that several processes write to. Each object here stands for the log of one process: what they
// share is the file, and claims hold between objects as they do between processes.
#include "LM_Daemon/src/rotating_log_file.h"

#include "LM_Daemon/src/log_header.h"
#include "tests/logging/log_fixture.h"
#include "util/native_file.h"

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <map>
#include <thread>

namespace {

using Rotation = RotatingLogFile::Rotation;
using testing::HasSubstr;
using testing::Not;

constexpr std::int64_t kLimit = 1000;
constexpr std::uint32_t kLater = 1 + RotatingLogFile::kCheckMs;

class SharedLogs : public testing::Test {
 protected:
  SharedLogs() {
    for (RotatingLogFile* const logP : {&mOne, &mOther})
      EXPECT_TRUE(logP->open(mFolder.path("a.log"), "a.log", kLimit));
  }

  static std::string full(char character) { return std::string(kLimit, character) + "\n"; }
  std::string log() const { return mFolder.read("a.log"); }
  std::string backup() const { return mFolder.read("a.bak"); }

  TempFolder mFolder;
  RotatingLogFile mOne{makeLogFile};
  RotatingLogFile mOther{makeLogFile};
};

TEST_F(SharedLogs, SecondProcessFollowsAndKeepsTheBackupOfTheFirst) {
  mOne.write(full('1'));
  EXPECT_EQ(mOne.prepare(1), Rotation::kDone);
  EXPECT_EQ(mOther.prepare(kLater), Rotation::kNone);
  mOther.write("other\n");
  EXPECT_THAT(backup(), HasSubstr(full('1')));
  EXPECT_EQ(log(), logHeader("a.log") + "other\n");
}

TEST_F(SharedLogs, LineOfAProcessThatHasNotNoticedEndsTheBackup) {
  EXPECT_EQ(mOther.prepare(1), Rotation::kNone);
  mOne.write(full('1'));
  EXPECT_EQ(mOne.prepare(1), Rotation::kDone);
  EXPECT_EQ(mOther.prepare(1), Rotation::kNone) << "time has not moved on: the system is not asked";
  mOther.write("other\n");
  EXPECT_THAT(backup(), HasSubstr(full('1') + "other\n"));
  EXPECT_EQ(mOther.prepare(kLater), Rotation::kNone);
  mOther.write("next\n");
  EXPECT_EQ(log(), logHeader("a.log") + "next\n");
}

TEST_F(SharedLogs, LineThatWentToARemovedBackupIsWrittenAgain) {
  EXPECT_EQ(mOther.prepare(1), Rotation::kNone);
  for (int i = 0; i < 2; ++i) {
    mOne.write(full('1'));
    EXPECT_EQ(mOne.prepare(1), Rotation::kDone);
  }
  mOther.write("late\n");
  EXPECT_THAT(log() + backup(), Not(HasSubstr("late")));
  EXPECT_EQ(mOther.prepare(kLater), Rotation::kNone);
  EXPECT_EQ(log(), logHeader("a.log") + "late\n");
}

TEST_F(SharedLogs, LinesOfOtherProcessesCountForTheLimit) {
  EXPECT_EQ(mOther.prepare(1), Rotation::kNone);
  mOne.write(full('1'));
  mOther.write("other\n");
  EXPECT_EQ(mOther.prepare(kLater), Rotation::kDone);
  EXPECT_THAT(backup(), HasSubstr(full('1') + "other\n"));
}

TEST_F(SharedLogs, LinesOfOtherProcessesCountAfterAFewLinesAlsoWithinOneMoment) {
  EXPECT_EQ(mOther.prepare(1), Rotation::kNone);
  mOne.write(full('1'));
  int lines = 0;
  for (; lines < 40 && mOther.prepare(1) == Rotation::kNone; ++lines) mOther.write("x\n");
  EXPECT_LT(lines, 40);
}

TEST_F(SharedLogs, OwnLinesCountForTheLimitAlsoWithinOneMoment) {
  EXPECT_EQ(mOne.prepare(1), Rotation::kNone);
  mOne.write(full('1'));
  EXPECT_EQ(mOne.prepare(1), Rotation::kDone);
}

TEST_F(SharedLogs, RotationOfAnotherProcessIsNoticedAfterThirtyKilobytesAlsoWithinOneMoment) {
  RotatingLogFile busy(makeLogFile);
  ASSERT_TRUE(busy.open(mFolder.path("a.log"), "a.log", 1000000));
  EXPECT_EQ(busy.prepare(1), Rotation::kNone);
  EXPECT_EQ(mOther.rotate(), Rotation::kDone);
  busy.write(std::string(std::size_t{31} * 1024, 'b') + "\n");
  EXPECT_EQ(busy.prepare(1), Rotation::kNone);
  busy.write("next\n");
  EXPECT_EQ(log(), logHeader("a.log") + "next\n");
}

TEST_F(SharedLogs, ClaimedFileIsWrittenOnUntilTheClaimEnds) {
  FileClaim claim;
  ASSERT_TRUE(claim.claim(mFolder.path("a.log")));
  mOne.write(full('1'));
  EXPECT_EQ(mOne.prepare(1), Rotation::kNone);
  mOne.write("2\n");
  EXPECT_FALSE(mFolder.has("a.bak"));
  claim.release();
  EXPECT_EQ(mOne.prepare(kLater), Rotation::kDone);
  EXPECT_THAT(backup(), HasSubstr(full('1') + "2\n"));
}

TEST_F(SharedLogs, FileThatIsGoneAndMadeAnewIsFollowed) {
  mOne.write("before\n");
  std::filesystem::rename(mFolder / "a.log", mFolder / "moved.log");
  mFolder.write("a.log", "by hand\n");
  EXPECT_EQ(mOne.prepare(kLater), Rotation::kNone);
  mOne.write("after\n");
  EXPECT_THAT(log(), HasSubstr("after\n"));
}

/// A line of a writer, complete; -1 when it is none.
int numberOf(const std::string& line, char writer) {
  int number = -1;
  const bool isLine = line.size() == 100 && line[0] == writer &&
                      std::sscanf(line.c_str() + 1, "%d", &number) == 1 && line.back() == writer;
  return isLine ? number : -1;
}

TEST_F(SharedLogs, TwoProcessesKeepLimitAndBackupAndLoseNoLine) {
  constexpr int kLines = 20000;
  constexpr std::int64_t kStressLimit = 100000;
  // A process that has not noticed a rotation adds what it may write between two checks.
  constexpr std::size_t kLate = 80000;
  const auto write = [this](char writer) {
    RotatingLogFile file(makeLogFile);
    ASSERT_TRUE(file.open(mFolder.path("b.log"), "b.log", kStressLimit));
    char line[102];
    for (int i = 0; i < kLines; ++i) {
      std::snprintf(line, sizeof line, "%c%-98d%c\n", writer, i, writer);
      const auto now = std::chrono::steady_clock::now().time_since_epoch();
      file.prepare(
          static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count()));
      file.write({line, 101});
    }
    file.prepare(~1u);
  };
  std::thread other(write, 'B');
  write('A');
  other.join();
  const std::string newer = mFolder.bytes("b.log"), older = mFolder.bytes("b.bak");
  EXPECT_LT(newer.size(), static_cast<std::size_t>(kStressLimit) + kLate);
  EXPECT_LT(older.size(), static_cast<std::size_t>(kStressLimit) + kLate);
  EXPECT_GE(older.size(), static_cast<std::size_t>(kStressLimit));
  std::map<char, int> next;
  for (const std::string& line : linesOf(mFolder.read("b.bak") + mFolder.read("b.log")))
    for (const char writer : {'A', 'B'}) {
      const int number = numberOf(line, writer);
      if (number < 0) continue;
      EXPECT_TRUE(next.count(writer) == 0 || number == next[writer]) << writer << ' ' << number;
      next[writer] = number + 1;
    }
  const int last = std::max(next['A'], next['B']);
  EXPECT_EQ(last, kLines) << "who ended last has its last line in the log";
}

}  // namespace
