#include "standin_clock.h"
#include "windows.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

namespace clock = standin::clock;

class ReplayClock : public testing::Test {
 protected:
  void SetUp() override { clock::start(clock::Kind::kReplay, 16); }
  void TearDown() override { clock::stop(); }
};

TEST_F(ReplayClock, ReplayStartsAtZeroOnTheStartingThread) {
  EXPECT_EQ(clock::nowMs(), 0);
  EXPECT_EQ(clock::kind(), clock::Kind::kReplay);
  EXPECT_TRUE(clock::isMainThread());
  bool isMainElsewhere = true;
  std::thread([&] { isMainElsewhere = clock::isMainThread(); }).join();
  EXPECT_FALSE(isMainElsewhere);
}

TEST_F(ReplayClock, ReplayTimeStandsStillByItself) {
  for (int i = 0; i < 1000; ++i) EXPECT_EQ(clock::nowMs(), 0);
}

TEST_F(ReplayClock, ReplayTimeNeverGoesBack) {
  clock::advanceTo(250);
  clock::advanceTo(100);
  EXPECT_EQ(clock::nowMs(), 250);
}

TEST_F(ReplayClock, DrawingCallTakesTheFramesTime) {
  clock::drawn();
  clock::drawn();
  EXPECT_EQ(clock::nowMs(), 32);
}

TEST_F(ReplayClock, SleepOnTheMainThreadAdvances) {
  Sleep(150);
  EXPECT_EQ(clock::nowMs(), 150);
  Sleep(0);
  EXPECT_EQ(clock::nowMs(), 150);
}

TEST_F(ReplayClock, TickCountReadAdvancesByOneWhenNothingElseHas) {
  EXPECT_EQ(GetTickCount(), 0u);
  EXPECT_EQ(GetTickCount(), 1u);
  EXPECT_EQ(GetTickCount(), 2u);
  clock::drawn();
  EXPECT_EQ(GetTickCount(), 18u);
  EXPECT_EQ(GetTickCount(), 19u);
}

TEST_F(ReplayClock, DrawingCallOfNoTimeIsNoAdvance) {
  clock::start(clock::Kind::kReplay, 0);
  GetTickCount();
  clock::drawn();
  EXPECT_EQ(GetTickCount(), 1u);
}

TEST_F(ReplayClock, TickCountReadOfAnotherThreadAdvancesNothing) {
  GetTickCount();
  DWORD first = 9;
  DWORD second = 9;
  std::thread([&] {
    first = GetTickCount();
    second = GetTickCount();
  }).join();
  EXPECT_EQ(first, 0u);
  EXPECT_EQ(second, 0u);
}

TEST_F(ReplayClock, TickCountWrapsFromTheBaseThatWasSet) {
  clock::setTickBase(0xFFFFFFFEu);
  EXPECT_EQ(GetTickCount(), 0xFFFFFFFEu);
  clock::advanceTo(5);
  EXPECT_EQ(GetTickCount(), 3u);
  EXPECT_EQ(clock::nowMs(), 5);
}

TEST_F(ReplayClock, ScheduledCallsRunInOrderOfTimeThenOfArrival) {
  std::vector<std::string> order;
  const auto note = [&order](const char* name) {
    return [&order, name] { order.push_back(name + std::to_string(clock::nowMs())); };
  };
  clock::schedule(20, note("late"));
  clock::schedule(10, note("first"));
  clock::schedule(10, note("second"));
  clock::schedule(31, note("beyond"));
  clock::advanceTo(30);
  EXPECT_EQ(order, (std::vector<std::string>{"first10", "second10", "late20"}));
  EXPECT_EQ(clock::nowMs(), 30);
}

TEST_F(ReplayClock, EveryAdvanceRunsWhatFallsDue) {
  int calls = 0;
  for (const std::int64_t timeMs : {5, 16, 17, 40}) clock::schedule(timeMs, [&calls] { ++calls; });
  clock::drawn();
  EXPECT_EQ(calls, 2);
  GetTickCount();
  GetTickCount();
  EXPECT_EQ(calls, 3);
  Sleep(23);
  EXPECT_EQ(calls, 4);
}

TEST_F(ReplayClock, CallScheduledInThePastRunsAtTheNextAdvance) {
  clock::advanceTo(100);
  std::int64_t ranAt = -1;
  clock::schedule(50, [&ranAt] { ranAt = clock::nowMs(); });
  EXPECT_EQ(ranAt, -1);
  clock::advanceTo(101);
  EXPECT_EQ(ranAt, 100);
}

TEST_F(ReplayClock, ScheduledCallMayScheduleAndAdvance) {
  std::vector<std::int64_t> times;
  clock::schedule(10, [&times] {
    clock::schedule(12, [&times] { times.push_back(clock::nowMs()); });
    Sleep(25);
    times.push_back(clock::nowMs());
  });
  clock::advanceTo(20);
  EXPECT_EQ(times, (std::vector<std::int64_t>{12, 35}));
  EXPECT_EQ(clock::nowMs(), 35);
}

TEST_F(ReplayClock, AdvancePassesOnWhatACallThrows) {
  clock::schedule(10, [] { throw std::runtime_error("broken"); });
  EXPECT_THROW(clock::advanceTo(20), std::runtime_error);
  EXPECT_EQ(clock::nowMs(), 10);
  clock::advanceTo(20);
  EXPECT_EQ(clock::nowMs(), 20);
}

TEST_F(ReplayClock, NextDueIsTheEarliestOfTimersAndCalls) {
  EXPECT_FALSE(clock::nextDue());
  const UINT_PTR timer = SetTimer(nullptr, 0, 100, [](HWND, UINT, UINT_PTR, DWORD) {});
  EXPECT_EQ(clock::nextDue(), 100);
  EXPECT_EQ(clock::nextTimer(), 100);
  clock::schedule(60, [] {});
  EXPECT_EQ(clock::nextDue(), 60);
  KillTimer(nullptr, timer);
  EXPECT_FALSE(clock::nextTimer());
  EXPECT_EQ(clock::nextDue(), 60);
}

TEST_F(ReplayClock, StartForgetsTheRunBefore) {
  clock::schedule(10, [] { ADD_FAILURE() << "a call of the run before"; });
  SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) {});
  clock::setTickBase(7);
  clock::advanceTo(5);
  clock::start(clock::Kind::kReplay, 16);
  EXPECT_EQ(clock::nowMs(), 0);
  EXPECT_EQ(clock::timerCount(), 0u);
  EXPECT_EQ(GetTickCount(), 0u);
  clock::advanceTo(50);
}

TEST_F(ReplayClock, StopForgetsWhatWasScheduledAndKeepsTheTime) {
  clock::schedule(10, [] { ADD_FAILURE() << "forgotten"; });
  SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) {});
  clock::advanceTo(5);
  clock::stop();
  EXPECT_FALSE(clock::nextDue());
  EXPECT_EQ(clock::nowMs(), 5);
}

TEST_F(ReplayClock, PacerIsCalledBeforeTimeMoves) {
  clock::start(clock::Kind::kReplay);
  std::vector<std::pair<std::int64_t, std::int64_t>> calls;
  clock::setPacer([&calls](std::int64_t timeMs) { calls.emplace_back(clock::nowMs(), timeMs); });
  clock::advanceTo(10);
  clock::advanceTo(10);
  clock::drawn();
  clock::setPacer({});
  clock::advanceTo(100);
  EXPECT_EQ(calls, (std::vector<std::pair<std::int64_t, std::int64_t>>{{0, 10}, {10, 26}}));
}

TEST_F(ReplayClock, WhatThePacerSchedulesHappensOnTheWay) {
  clock::start(clock::Kind::kReplay);
  std::int64_t happenedAt = -1;
  clock::setPacer([&happenedAt](std::int64_t) {
    clock::schedule(clock::nowMs() + 1, [&happenedAt] { happenedAt = clock::nowMs(); });
  });
  clock::advanceTo(10);
  EXPECT_EQ(happenedAt, 1);
  EXPECT_EQ(clock::nowMs(), 10);
  clock::setPacer({});
}

TEST_F(ReplayClock, StartForgetsThePacer) {
  clock::start(clock::Kind::kReplay);
  clock::setPacer([](std::int64_t) { FAIL() << "a pacer of an earlier run"; });
  clock::start(clock::Kind::kReplay);
  clock::advanceTo(10);
}

}  // namespace
