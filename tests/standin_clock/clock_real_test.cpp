#include "standin_clock.h"
#include "windows.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {

namespace clock = standin::clock;

/// Fast enough that a second of the clock's takes a millisecond.
constexpr double kSpeed = 1000.0;

class RealClock : public testing::Test {
 protected:
  void SetUp() override { clock::start(clock::Kind::kReal, 16, kSpeed); }
  void TearDown() override { clock::stop(); }
};

TEST_F(RealClock, RealTimeRunsByItself) {
  const std::int64_t before = clock::nowMs();
  while (clock::nowMs() == before) std::this_thread::yield();
  EXPECT_GT(clock::nowMs(), before);
  EXPECT_EQ(clock::kind(), clock::Kind::kReal);
}

TEST_F(RealClock, AdvanceReturnsWhenItsTimeHasCome) {
  const std::int64_t target = clock::nowMs() + 500;
  clock::advanceTo(target);
  EXPECT_GE(clock::nowMs(), target);
}

TEST_F(RealClock, WaitsTakeTheirTime) {
  std::int64_t before = clock::nowMs();
  Sleep(300);
  EXPECT_GE(clock::nowMs(), before + 300);
  before = clock::nowMs();
  clock::drawn();
  EXPECT_GE(clock::nowMs(), before + 16);
  before = clock::nowMs();
  clock::Alarm alarm;
  EXPECT_FALSE(alarm.wait(200));
  EXPECT_GE(clock::nowMs(), before + 200);
}

TEST_F(RealClock, RingEndsAWaitOfAnotherThread) {
  clock::Alarm alarm;
  std::atomic<bool> isRung{false};
  std::thread thread([&] { isRung = alarm.wait(1000000000); });
  alarm.ring();
  thread.join();
  EXPECT_TRUE(isRung);
}

TEST_F(RealClock, ScheduledCallsRunOnAThreadOfTheClocksOwn) {
  std::atomic<int> calls{0};
  std::atomic<bool> isOnMain{true};
  clock::schedule(400, [&] { ++calls; });
  clock::schedule(200, [&] {
    isOnMain = clock::isMainThread();
    ++calls;
  });
  while (calls < 2) std::this_thread::yield();
  EXPECT_FALSE(isOnMain);
  EXPECT_GE(clock::nowMs(), 400);
  EXPECT_FALSE(clock::nextDue());
}

TEST_F(RealClock, ThreadCountLeavesOutTheClocksOwn) {
  clock::schedule(1000000000, [] {});
  EXPECT_EQ(clock::otherThreads(), 0u);
  EXPECT_TRUE(clock::settle());
}

TEST_F(RealClock, StopForgetsWhatIsStillScheduled) {
  clock::schedule(1000000000, [] { ADD_FAILURE(); });
  clock::stop();
  EXPECT_FALSE(clock::nextDue());
}

TEST_F(RealClock, TimersFallDueByThemselves) {
  SetTimer(nullptr, 0, 100, [](HWND, UINT, UINT_PTR, DWORD) {});
  const std::int64_t due = clock::nextTimer().value();
  EXPECT_FALSE(clock::nowMs() < due && clock::runDueTimer());
  clock::advanceTo(due);
  EXPECT_TRUE(clock::runDueTimer());
}

TEST_F(RealClock, TickCountReadAddsNothing) {
  clock::start(clock::Kind::kReal, 16, 0.001);
  EXPECT_EQ(GetTickCount(), 0u);
  EXPECT_EQ(GetTickCount(), 0u);
}

TEST_F(RealClock, StartEndsTheWaitsOfTheRunBefore) {
  std::atomic<bool> isWaiting{false};
  std::thread thread([&] {
    isWaiting = true;
    Sleep(2000000000);
  });
  while (!isWaiting || !clock::nextDue()) std::this_thread::yield();
  clock::start(clock::Kind::kReplay);
  thread.join();
}

}  // namespace
