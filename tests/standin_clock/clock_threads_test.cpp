#include "standin_clock.h"
#include "windows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace {

namespace clock = standin::clock;

/// What happened, who and when; written by several threads.
class Diary {
 public:
  void note(const std::string& what) {
    const std::lock_guard lock(mMutex);
    mLines.push_back(what + "@" + std::to_string(clock::nowMs()));
  }
  std::vector<std::string> lines() const {
    const std::lock_guard lock(mMutex);
    return mLines;
  }

 private:
  mutable std::mutex mMutex;
  std::vector<std::string> mLines;
};

using Lines = std::vector<std::string>;

class ReplayThreads : public testing::Test {
 protected:
  void SetUp() override { clock::start(clock::Kind::kReplay, 16); }
  void TearDown() override {
    EXPECT_EQ(clock::stalls(), 0u);
    clock::stop();
  }

  /// Starts a thread and waits until it waits.
  std::thread begun(std::function<void()> body) {
    std::thread thread(std::move(body));
    EXPECT_TRUE(clock::settle());
    return thread;
  }

  Diary mDiary;
};

TEST_F(ReplayThreads, SleeperHasRunBeforeTheAdvanceReturns) {
  std::thread thread = begun([this] {
    Sleep(30);
    mDiary.note("awake");
    Sleep(30);
    mDiary.note("ending");
  });
  clock::advanceTo(29);
  EXPECT_EQ(mDiary.lines(), Lines{});
  clock::advanceTo(30);
  EXPECT_EQ(mDiary.lines(), Lines{"awake@30"});
  clock::advanceTo(100);
  EXPECT_EQ(mDiary.lines(), (Lines{"awake@30", "ending@60"}));
  thread.join();
}

TEST_F(ReplayThreads, SleepOnTheMainThreadWakesSleepersDueOnTheWay) {
  std::thread thread = begun([this] {
    Sleep(10);
    mDiary.note("other");
  });
  Sleep(25);
  mDiary.note("main");
  EXPECT_EQ(mDiary.lines(), (Lines{"other@10", "main@25"}));
  thread.join();
}

TEST_F(ReplayThreads, ScheduledRingWakesTheWaitingThread) {
  clock::Alarm alarm;
  std::thread thread = begun([&] {
    EXPECT_TRUE(alarm.wait(50));
    mDiary.note("rung");
    EXPECT_FALSE(alarm.wait(50));
    mDiary.note("timed out");
  });
  clock::schedule(20, [&] {
    alarm.ring();
    mDiary.note("ring returned");
  });
  clock::advanceTo(200);
  EXPECT_EQ(mDiary.lines(), (Lines{"rung@20", "ring returned@20", "timed out@70"}));
  thread.join();
}

TEST_F(ReplayThreads, RingBeforeTheWaitEndsItAtOnce) {
  clock::Alarm alarm;
  alarm.ring();
  std::thread thread([&] { EXPECT_TRUE(alarm.wait(1000)); });
  thread.join();
  EXPECT_EQ(clock::nowMs(), 0);
}

TEST_F(ReplayThreads, OneWaitUsesUpTheRing) {
  clock::Alarm alarm;
  alarm.ring();
  alarm.ring();
  EXPECT_TRUE(alarm.wait(10));
  EXPECT_FALSE(alarm.wait(10));
  EXPECT_EQ(clock::nowMs(), 10);
}

TEST_F(ReplayThreads, WaitOnTheMainThreadAdvancesUntilTheRing) {
  clock::Alarm alarm;
  clock::schedule(30, [&] { alarm.ring(); });
  EXPECT_TRUE(alarm.wait(1000));
  EXPECT_EQ(clock::nowMs(), 30);
  EXPECT_FALSE(alarm.wait(5));
  EXPECT_EQ(clock::nowMs(), 35);
}

TEST_F(ReplayThreads, RingLetsAThreadEndWithoutAnAdvance) {
  clock::Alarm alarm;
  std::thread thread = begun([&] {
    alarm.wait(1000);
    mDiary.note("ended");
  });
  alarm.ring();
  EXPECT_EQ(mDiary.lines(), Lines{"ended@0"});
  thread.join();
}

TEST_F(ReplayThreads, CallsPrecedeAlarmsAndAlarmsPrecedeSleepersAtOneTime) {
  clock::Alarm alarm;
  std::vector<std::thread> threads;
  for (const char* const name : {"sleeper 1", "sleeper 2", "sleeper 3"})
    threads.push_back(begun([this, name] {
      Sleep(100);
      mDiary.note(name);
    }));
  threads.push_back(begun([&] {
    alarm.wait(100);
    mDiary.note("alarm");
  }));
  clock::schedule(100, [this] { mDiary.note("call"); });
  clock::advanceTo(100);
  EXPECT_EQ(mDiary.lines(),
            (Lines{"call@100", "alarm@100", "sleeper 1@100", "sleeper 2@100", "sleeper 3@100"}));
  for (std::thread& thread : threads) thread.join();
}

TEST_F(ReplayThreads, OlderThreadWakesFirstWhoeverWaitedFirst) {
  std::atomic<bool> isSecondWaiting{false};
  std::thread older([&] {
    while (!isSecondWaiting) std::this_thread::yield();
    Sleep(10);
    mDiary.note("older");
  });
  std::thread younger([&] {
    isSecondWaiting = true;
    Sleep(10);
    mDiary.note("younger");
  });
  ASSERT_TRUE(clock::settle());
  clock::advanceTo(10);
  EXPECT_EQ(mDiary.lines(), (Lines{"older@10", "younger@10"}));
  older.join();
  younger.join();
}

TEST_F(ReplayThreads, RungThreadRunsWhenTheRingingOneWaits) {
  clock::Alarm alarm;
  std::thread rung = begun([&] {
    alarm.wait(1000);
    mDiary.note("rung");
  });
  std::thread ringing = begun([&] {
    Sleep(10);
    alarm.ring();
    for (int i = 0; i < 1000; ++i) std::this_thread::yield();
    mDiary.note("ringing waits");
    Sleep(10);
    mDiary.note("ringing ends");
  });
  clock::advanceTo(20);
  EXPECT_EQ(mDiary.lines(), (Lines{"ringing waits@10", "rung@10", "ringing ends@20"}));
  rung.join();
  ringing.join();
}

TEST_F(ReplayThreads, WaitOfNoTimeEndsWhenTimeNextAdvances) {
  std::thread thread = begun([this] {
    for (int i = 0; i < 3; ++i) Sleep(0);
    mDiary.note("after three");
  });
  clock::advanceTo(10);
  EXPECT_EQ(mDiary.lines(), Lines{"after three@3"});
  thread.join();
}

TEST_F(ReplayThreads, EndingThreadLeavesTheClock) {
  std::thread thread = begun([] { Sleep(10); });
  EXPECT_EQ(clock::otherThreads(), 1u);
  clock::advanceTo(10);
  thread.join();
  EXPECT_TRUE(clock::settle());
  EXPECT_EQ(clock::otherThreads(), 0u);
  EXPECT_FALSE(clock::nextDue());
}

TEST_F(ReplayThreads, SettleWaitsForThreadsThatHaveNotWaitedYet) {
  std::atomic<bool> hasRun{false};
  std::thread thread([&] {
    for (int i = 0; i < 500; ++i) std::this_thread::yield();
    hasRun = true;
    Sleep(5);
  });
  EXPECT_TRUE(clock::settle());
  EXPECT_TRUE(hasRun);
  EXPECT_EQ(clock::nextDue(), 5);
  clock::advanceTo(5);
  thread.join();
}

TEST_F(ReplayThreads, SettleGivesUpOnAThreadThatNeverWaits) {
  clock::setPatience(2);
  std::atomic<bool> isToEnd{false};
  std::thread thread([&] {
    while (!isToEnd) std::this_thread::yield();
  });
  EXPECT_FALSE(clock::settle());
  isToEnd = true;
  thread.join();
  clock::setPatience(10000);
  EXPECT_TRUE(clock::settle());
}

TEST_F(ReplayThreads, ClockCountsAnAdvanceThatAWokenThreadHoldsUp) {
  std::atomic<bool> isToEnd{false};
  std::thread thread = begun([&] {
    Sleep(10);
    while (!isToEnd) std::this_thread::yield();
  });
  clock::setPatience(2);
  testing::internal::CaptureStderr();
  clock::advanceTo(10);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "clock: at 10 ms a woken thread neither waits again nor ends\n");
  EXPECT_EQ(clock::stalls(), 1u);
  isToEnd = true;
  thread.join();
  clock::start(clock::Kind::kReplay);
  EXPECT_EQ(clock::stalls(), 0u);
}

TEST_F(ReplayThreads, StartReleasesThreadsOfTheRunBefore) {
  clock::Alarm alarm;
  std::thread sleeping = begun([] { Sleep(1000); });
  std::thread waiting = begun([&] { EXPECT_FALSE(alarm.wait(1000)); });
  clock::start(clock::Kind::kReplay);
  sleeping.join();
  waiting.join();
  clock::advanceTo(2000);
}

#ifdef __SANITIZE_THREAD__
constexpr bool kIsThreadSanitized = true;
#else
constexpr bool kIsThreadSanitized = false;
#endif

TEST_F(ReplayThreads, NewThreadRunsToItsFirstWaitBeforeItsCreationReturns) {
  if (kIsThreadSanitized) GTEST_SKIP() << "the thread sanitizer holds new threads back";
  clock::setSettlingNewThreads(true);
  std::thread thread([this] {
    for (int i = 0; i < 1000; ++i) std::this_thread::yield();
    mDiary.note("first line");
    Sleep(10);
  });
  mDiary.note("created");
  EXPECT_EQ(mDiary.lines(), (Lines{"first line@0", "created@0"}));
  clock::advanceTo(10);
  thread.join();
}

TEST_F(ReplayThreads, NewThreadThatEndsWithoutAWaitLetsItsCreationReturn) {
  if (kIsThreadSanitized) GTEST_SKIP() << "the thread sanitizer holds new threads back";
  clock::setSettlingNewThreads(true);
  std::thread thread([this] { mDiary.note("only line"); });
  mDiary.note("created");
  EXPECT_EQ(mDiary.lines(), (Lines{"only line@0", "created@0"}));
  thread.join();
}

TEST_F(ReplayThreads, CreationGivesUpOnAThreadThatNeverWaitsAndCountsIt) {
  if (kIsThreadSanitized) GTEST_SKIP() << "the thread sanitizer holds new threads back";
  clock::setSettlingNewThreads(true);
  clock::setPatience(2);
  std::atomic<bool> isToEnd{false};
  std::thread thread([&] {
    while (!isToEnd) std::this_thread::yield();
  });
  EXPECT_EQ(clock::stalls(), 1u);
  isToEnd = true;
  thread.join();
  clock::start(clock::Kind::kReplay);
}

/// A reader that takes numbers from a queue as a client library's reader takes events.
class Reader {
 public:
  explicit Reader(Diary& diary) : mDiary(diary), mThread([this] { run(); }) {}
  ~Reader() {
    mIsToRun = false;
    mAlarm.ring();
    mThread.join();
  }
  void deliver(int number) {
    {
      const std::lock_guard lock(mMutex);
      mQueue.push_back(number);
    }
    mAlarm.ring();
  }
  int lastProcessed() const { return mLastProcessed; }

 private:
  void run() {
    while (mIsToRun) {
      mAlarm.wait(50);
      const std::lock_guard lock(mMutex);
      if (mQueue.empty()) mDiary.note("nothing");
      for (; !mQueue.empty(); mQueue.pop_front()) {
        mLastProcessed = mQueue.front();
        mDiary.note("event " + std::to_string(mQueue.front()));
      }
    }
  }

  Diary& mDiary;
  std::mutex mMutex;
  std::deque<int> mQueue;
  clock::Alarm mAlarm;
  std::atomic<bool> mIsToRun{true};
  std::atomic<int> mLastProcessed{-1};
  std::thread mThread;
};

Diary* timerDiary = nullptr;
Reader* timerReader = nullptr;

void CALLBACK noteTimer(HWND, UINT, UINT_PTR, DWORD) {
  timerDiary->note("timer sees " + std::to_string(timerReader->lastProcessed()));
  for (int pass = 0; pass < 3; ++pass) {
    const DWORD ticks = GetTickCount();
    clock::drawn();
    timerDiary->note("pass " + std::to_string(ticks));
  }
}

/// A whole run: a reading thread, a thread that wakes every two seconds, timers and a thousand events.
Lines playScenario() {
  clock::start(clock::Kind::kReplay, 16);
  Diary diary;
  auto reader = std::make_unique<Reader>(diary);
  std::atomic<bool> isToWatch{true};
  std::thread watch([&] {
    while (isToWatch) {
      diary.note("watch");
      Sleep(2000);
    }
  });
  timerDiary = &diary;
  timerReader = reader.get();
  EXPECT_TRUE(clock::settle());
  SetTimer(nullptr, 0, 10, noteTimer);
  SetTimer(nullptr, 0, 70, noteTimer);
  for (int i = 0; i < 1000; ++i)
    clock::schedule(7 * i, [&reader, i] {
      reader->deliver(i);
      EXPECT_EQ(reader->lastProcessed(), i);
    });
  while (clock::nowMs() < 7500) {
    clock::advanceTo(*clock::nextDue());
    while (clock::runDueTimer() && clock::nowMs() < 7500) {
    }
  }
  isToWatch = false;
  Sleep(2000);
  watch.join();
  reader.reset();
  EXPECT_EQ(clock::stalls(), 0u);
  clock::stop();
  return diary.lines();
}

TEST(ReplayScenario, TwoRunsGiveTheSameSequence) {
  const Lines first = playScenario();
  EXPECT_EQ(std::count_if(first.begin(), first.end(),
                          [](const std::string& line) { return line.compare(0, 6, "event ") == 0; }),
            1000);
  for (int again = 0; again < 3; ++again) EXPECT_EQ(playScenario(), first);
}

}  // namespace
