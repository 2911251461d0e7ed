#include "standin_clock.h"
#include "windows.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>
#include <vector>

namespace {

namespace clock = standin::clock;

struct Tick {
  UINT message;
  UINT_PTR id;
  DWORD ticks;
};
std::vector<Tick> ticksSeen;

void CALLBACK notePlainly(HWND, UINT message, UINT_PTR id, DWORD ticks) {
  ticksSeen.push_back({message, id, ticks});
}

class Timers : public testing::Test {
 protected:
  void SetUp() override {
    ticksSeen.clear();
    clock::start(clock::Kind::kReplay, 16);
  }
  void TearDown() override { clock::stop(); }
};

TEST_F(Timers, TimersGetFreshIdsOtherThanZero) {
  const UINT_PTR first = SetTimer(nullptr, 0, 100, notePlainly);
  KillTimer(nullptr, first);
  const UINT_PTR second = SetTimer(nullptr, 0, 100, notePlainly);
  const UINT_PTR third = SetTimer(nullptr, 0, 100, notePlainly);
  EXPECT_NE(first, 0u);
  EXPECT_NE(second, first);
  EXPECT_NE(third, second);
  EXPECT_EQ(clock::timerCount(), 2u);
}

TEST_F(Timers, TimersRunOnlyWhenTheLoopDispatchesThem) {
  const UINT_PTR id = SetTimer(nullptr, 0, 100, notePlainly);
  clock::advanceTo(99);
  EXPECT_FALSE(clock::runDueTimer());
  clock::advanceTo(100);
  EXPECT_TRUE(ticksSeen.empty());
  EXPECT_TRUE(clock::runDueTimer());
  ASSERT_EQ(ticksSeen.size(), 1u);
  EXPECT_EQ(ticksSeen[0].message, static_cast<UINT>(WM_TIMER));
  EXPECT_EQ(ticksSeen[0].id, id);
  EXPECT_EQ(ticksSeen[0].ticks, 100u);
}

TEST_F(Timers, TimersRepeatUntilTheyAreKilled) {
  const UINT_PTR id = SetTimer(nullptr, 0, 100, notePlainly);
  clock::advanceTo(100);
  EXPECT_TRUE(clock::runDueTimer());
  clock::advanceTo(200);
  EXPECT_TRUE(clock::runDueTimer());
  EXPECT_EQ(KillTimer(nullptr, id), TRUE);
  clock::advanceTo(1000);
  EXPECT_FALSE(clock::runDueTimer());
}

TEST_F(Timers, LateTimersFireOnce) {
  SetTimer(nullptr, 0, 10, notePlainly);
  clock::advanceTo(1000);
  EXPECT_TRUE(clock::runDueTimer());
  EXPECT_FALSE(clock::runDueTimer());
  EXPECT_EQ(clock::nextTimer(), 1010);
}

TEST_F(Timers, TimerDueLongestComesFirst) {
  const UINT_PTR slow = SetTimer(nullptr, 0, 30, notePlainly);
  const UINT_PTR quick = SetTimer(nullptr, 0, 20, notePlainly);
  clock::advanceTo(50);
  while (clock::runDueTimer()) {
  }
  ASSERT_EQ(ticksSeen.size(), 2u);
  EXPECT_EQ(ticksSeen[0].id, quick);
  EXPECT_EQ(ticksSeen[1].id, slow);
}

TEST_F(Timers, TimersHaveAPeriodOfTenMillisecondsAtLeast) {
  SetTimer(nullptr, 0, 1, notePlainly);
  EXPECT_EQ(clock::nextTimer(), 10);
}

TEST_F(Timers, KnownIdReplacesItsTimer) {
  const UINT_PTR id = SetTimer(nullptr, 0, 100, notePlainly);
  EXPECT_EQ(SetTimer(nullptr, id, 20, notePlainly), id);
  EXPECT_EQ(clock::timerCount(), 1u);
  EXPECT_EQ(clock::nextTimer(), 20);
}

TEST_F(Timers, KillRefusesAnUnknownId) {
  EXPECT_EQ(KillTimer(nullptr, 4711), FALSE);
  const UINT_PTR id = SetTimer(nullptr, 0, 100, notePlainly);
  EXPECT_EQ(KillTimer(nullptr, id), TRUE);
  EXPECT_EQ(KillTimer(nullptr, id), FALSE);
}

TEST_F(Timers, SetTimerRefusesAWindowAndAMissingProcedure) {
  EXPECT_EQ(SetTimer(nullptr, 0, 100, nullptr), 0u);
  EXPECT_EQ(SetTimer(reinterpret_cast<HWND>(8), 0, 100, notePlainly), 0u);
}

TEST_F(Timers, TimersBelongToTheMainThread) {
  const UINT_PTR id = SetTimer(nullptr, 0, 100, notePlainly);
  UINT_PTR elsewhere = 1;
  BOOL isKilled = TRUE;
  std::thread([&] {
    elsewhere = SetTimer(nullptr, 0, 100, notePlainly);
    isKilled = KillTimer(nullptr, id);
  }).join();
  EXPECT_EQ(elsewhere, 0u);
  EXPECT_EQ(isKilled, FALSE);
  EXPECT_EQ(clock::timerCount(), 1u);
}

UINT_PTR rearmed = 0;
void CALLBACK rearm(HWND, UINT, UINT_PTR id, DWORD) {
  KillTimer(nullptr, id);
  rearmed = SetTimer(nullptr, 0, 10, rearm);
}

TEST_F(Timers, TimerProcedureMayKillAndReplaceItsTimer) {
  SetTimer(nullptr, 0, 100, rearm);
  clock::advanceTo(100);
  EXPECT_TRUE(clock::runDueTimer());
  EXPECT_EQ(clock::timerCount(), 1u);
  EXPECT_EQ(clock::nextTimer(), 110);
  EXPECT_EQ(KillTimer(nullptr, rearmed), TRUE);
}

TEST_F(Timers, DispatchPassesOnWhatTheProcedureThrows) {
  SetTimer(nullptr, 0, 100, [](HWND, UINT, UINT_PTR, DWORD) { throw std::runtime_error("broken"); });
  clock::advanceTo(100);
  EXPECT_THROW(clock::runDueTimer(), std::runtime_error);
}

}  // namespace
