// The clock of the Windows build: the machine's own time, the message loop's own timers. There is no replay
// here, whatever start() is asked for, and the speed is always 1.
#include "standin_clock.h"

#include <windows.h>
#include <tlhelp32.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <set>
#include <thread>
#include <utility>

namespace standin::clock {
namespace {

using SteadyClock = std::chrono::steady_clock;
using std::chrono::milliseconds;

/// Windows does not list a thread's timers. One that is left shows itself when it falls due.
constexpr std::int64_t kTimersShowWithinMs = 250;

std::set<DWORD> threadsOfThisProcess() {
  std::set<DWORD> threads;
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  THREADENTRY32 entry{};
  entry.dwSize = sizeof entry;
  for (BOOL found = Thread32First(snapshot, &entry); found; found = Thread32Next(snapshot, &entry))
    if (entry.th32OwnerProcessID == GetCurrentProcessId()) threads.insert(entry.th32ThreadID);
  CloseHandle(snapshot);
  return threads;
}

/// Carries out what was scheduled, on a thread of its own.
class Runner {
 public:
  ~Runner() { end(); }

  void add(SteadyClock::time_point time, std::function<void()> call) {
    {
      const std::lock_guard lock(mMutex);
      mCalls.emplace(time, std::move(call));
      mIsToEnd = false;
    }
    mNews.notify_all();
    if (!mThread.joinable()) start();
  }

  void end() {
    {
      const std::lock_guard lock(mMutex);
      mIsToEnd = true;
      mCalls.clear();
    }
    mNews.notify_all();
    if (mThread.joinable()) mThread.join();
    mThread = {};
    mId = 0;
  }

  DWORD id() const { return mId; }

 private:
  void start() {
    std::unique_lock lock(mMutex);
    mThread = std::thread([this] { run(); });
    mNews.wait(lock, [this] { return mId != 0; });
  }

  void run() {
    std::unique_lock lock(mMutex);
    mId = GetCurrentThreadId();
    mNews.notify_all();
    while (!mIsToEnd) {
      if (mCalls.empty()) {
        mNews.wait(lock);
      } else if (const auto due = mCalls.begin()->first; due > SteadyClock::now()) {
        mNews.wait_until(lock, due);
      } else {
        const std::function<void()> call = std::move(mCalls.begin()->second);
        mCalls.erase(mCalls.begin());
        lock.unlock();
        call();
        lock.lock();
      }
    }
  }

  std::mutex mMutex;
  std::condition_variable mNews;
  std::multimap<SteadyClock::time_point, std::function<void()>> mCalls;
  std::thread mThread;
  bool mIsToEnd = false;
  DWORD mId = 0;
};

struct State {
  SteadyClock::time_point zero = SteadyClock::now();
  std::uint32_t frameMs = 16;
  DWORD mainThread = GetCurrentThreadId();
  std::set<DWORD> olderThreads;
  Runner runner;
};

State& state() {
  static State instance;
  return instance;
}

/// Every message but the timers', which the host's loop takes one by one.
void dispatchOthers() {
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, WM_TIMER - 1, PM_REMOVE) ||
         PeekMessageW(&message, nullptr, WM_TIMER + 1, 0xFFFFFFFF, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

bool isTimerDue() {
  MSG message{};
  return PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_NOREMOVE) != FALSE;
}

}  // namespace

void start(Kind /*kind*/, std::uint32_t frameMs, double /*speed*/) {
  State& clock = state();
  clock.runner.end();
  clock.mainThread = GetCurrentThreadId();
  clock.frameMs = frameMs;
  clock.olderThreads = threadsOfThisProcess();
  clock.zero = SteadyClock::now();
}

void stop() {
  state().runner.end();
}

std::int64_t nowMs() {
  return std::chrono::duration_cast<milliseconds>(SteadyClock::now() - state().zero).count();
}

Kind kind() {
  return Kind::kReal;
}

bool isMainThread() {
  return GetCurrentThreadId() == state().mainThread;
}

/// Returns early when a timer's message comes: the loop that called serves it and comes back.
void advanceTo(std::int64_t timeMs) {
  for (dispatchOthers(); nowMs() < timeMs && !isTimerDue(); dispatchOthers())
    MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(std::max<std::int64_t>(timeMs - nowMs(), 1)),
                                QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}

void drawn() {
  std::this_thread::sleep_for(milliseconds(state().frameMs));
}

void schedule(std::int64_t timeMs, std::function<void()> call) {
  state().runner.add(state().zero + milliseconds(timeMs), std::move(call));
}

/// A timer is known from the moment it is due.
std::optional<std::int64_t> nextTimer() {
  return isTimerDue() ? std::optional(nowMs()) : std::nullopt;
}

bool runDueTimer() {
  MSG message{};
  if (!PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE)) return false;
  DispatchMessageW(&message);
  return true;
}

/// Takes the messages of the timers that fall due meanwhile, and does not serve them.
std::size_t timerCount() {
  std::set<UINT_PTR> timers;
  const std::int64_t end = nowMs() + kTimersShowWithinMs;
  for (MSG message{}; nowMs() < end; std::this_thread::sleep_for(milliseconds(1)))
    while (PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE))
      if (message.lParam != 0) timers.insert(message.wParam);
  return timers.size();
}

bool settle() {
  return true;
}

std::uint64_t stalls() {
  return 0;
}

std::size_t otherThreads() {
  const State& clock = state();
  std::size_t count = 0;
  for (const DWORD thread : threadsOfThisProcess())
    if (thread != clock.runner.id() && clock.olderThreads.count(thread) == 0) ++count;
  return count;
}

}  // namespace standin::clock
