#include "util/sleep_mutex.h"

#include "standin_clock.h"
#include "util/threads.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

class SleepMutexes : public testing::Test {
 protected:
  SleepMutexes() {
    standin::clock::start(standin::clock::Kind::kReplay);
    testing::internal::CaptureStdout();
    mMutex.emplace("name");
    mConstruction = testing::internal::GetCapturedStdout();
    testing::internal::CaptureStdout();
  }
  ~SleepMutexes() override {
    mMutex.reset();
    testing::internal::GetCapturedStdout();
    standin::clock::stop();
  }

  /// What was printed since the last call.
  std::string printed() {
    const std::string text = testing::internal::GetCapturedStdout();
    testing::internal::CaptureStdout();
    return text;
  }

  const std::string mThread = std::to_string(currentThreadId());
  const std::string mForced =
      "SleepMutex::lock(): 'name' forced to unlock due to timeout, called by thread " + mThread + "\n";
  std::string mConstruction;
  std::optional<SleepMutex> mMutex;
};

TEST_F(SleepMutexes, SleepMutexPrintsConstructionAndDestruction) {
  EXPECT_EQ(mConstruction, "SleepMutex::SleepMutex(): 'name' constructed by thread " + mThread + ".\n");
  mMutex.reset();
  EXPECT_EQ(printed(), "SleepMutex::~SleepMutex(): 'name' destructed by thread " + mThread + "\n");
}

TEST_F(SleepMutexes, SleepMutexKeepsThirtyTwoCharactersOfItsName) {
  const SleepMutex mutex("0123456789012345678901234567890123456789");
  EXPECT_EQ(mutex.name(), "01234567890123456789012345678901");
}

TEST_F(SleepMutexes, SleepMutexTakesAFreeLockAtOnceWithoutAMessage) {
  EXPECT_EQ(mMutex->lock(), 0);
  EXPECT_TRUE(mMutex->isLocked());
  EXPECT_EQ(standin::clock::nowMs(), 0);
  EXPECT_EQ(printed(), "");
}

TEST_F(SleepMutexes, SleepMutexTakesALockThatIsNeverReleasedAfterTwoHundredPolls) {
  mMutex->lock();
  EXPECT_EQ(mMutex->lock(), 0);
  EXPECT_TRUE(mMutex->isLocked());
  EXPECT_EQ(standin::clock::nowMs(), 10000);
  EXPECT_EQ(printed(), mForced);
}

TEST_F(SleepMutexes, SleepMutexTakesALockAtThePollAfterItsRelease) {
  mMutex->lock();
  standin::clock::schedule(120, [this] { mMutex->unlock(); });
  mMutex->lock();
  EXPECT_EQ(standin::clock::nowMs(), 150);
  EXPECT_EQ(printed(), "");
}

TEST_F(SleepMutexes, SleepMutexReportsAReleaseAtTheTwoHundredthPollAsForced) {
  mMutex->lock();
  standin::clock::schedule(9990, [this] { mMutex->unlock(); });
  mMutex->lock();
  EXPECT_EQ(standin::clock::nowMs(), 10000);
  EXPECT_EQ(printed(), mForced);
}

TEST_F(SleepMutexes, SleepMutexReportsNoReleaseBeforeTheLastPoll) {
  mMutex->lock();
  standin::clock::schedule(9950, [this] { mMutex->unlock(); });
  mMutex->lock();
  EXPECT_EQ(standin::clock::nowMs(), 9950);
  EXPECT_EQ(printed(), "");
}

}  // namespace
