// The clock of the Windows build: the machine's own time and the message loop's own timers. There is no
// replay here, whatever kind start() is given, and the speed is always 1.
#include "process_threads.h"
#include "real_time.h"
#include "runner.h"
#include "standin_clock.h"

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <set>
#include <thread>
#include <utility>

namespace standin::clock {
namespace {

using std::chrono::milliseconds;

/// Windows does not list a thread's timers. One that is left shows itself when it falls due.
constexpr std::int64_t kTimersShowWithinMs = 250;

struct State {
  RealTime time;
  Runner runner{time};
  std::uint32_t frameMs = 16;
  ThreadId mainThread = currentThread();
  std::set<ThreadId> olderThreads;
};

/// Never destroyed: a process that ends has ended the runner's thread, which may have held its lock.
State& state() {
  static auto* const instance = new State;
  return *instance;
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
  clock.mainThread = currentThread();
  clock.frameMs = frameMs;
  clock.olderThreads = processThreads();
  clock.time = {};
}

void stop() {
  state().runner.end();
}

std::int64_t nowMs() {
  return state().time.nowMs();
}

Kind kind() {
  return Kind::kReal;
}

bool isMainThread() {
  return currentThread() == state().mainThread;
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
  state().runner.schedule(timeMs, std::move(call));
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

/// There is no replay to set the date of.
void setDate(std::int64_t /*utcMs*/) {}

/// Windows runs a new thread when it likes.
void setSettlingNewThreads(bool /*isSettling*/) {}

bool settle() {
  return true;
}

std::uint64_t stalls() {
  return 0;
}

std::size_t otherThreads() {
  const State& clock = state();
  std::size_t count = 0;
  for (const ThreadId thread : processThreads())
    if (thread != clock.runner.threadId() && clock.olderThreads.count(thread) == 0) ++count;
  return count;
}

}  // namespace standin::clock
