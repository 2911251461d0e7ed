/// How virtual time goes forward.
#include "clock_core.h"

#include <algorithm>
#include <cassert>
#include <cstdio>
#include <limits>
#include <utility>

namespace standin::clock {

void Core::moveTo(std::int64_t timeMs) {
  // A call that was scheduled in the past runs now; time does not go back for it.
  if (timeMs <= replayMs) return;
  replayMs = timeMs;
  isMoved = true;
}

void Core::pace(Lock& lock, std::int64_t timeMs) {
  if (!pacer || isPacing || timeMs <= replayMs) return;
  isPacing = true;
  // Unlocked: the pacer waits in real time, and schedules what has arrived meanwhile.
  lock.unlock();
  pacer(timeMs);
  lock.lock();
  isPacing = false;
}

void Core::advance(Lock& lock, std::int64_t timeMs, const bool* isEndedP) {
  assert(isReplayMain() && "only the main thread advances the replay clock");
  pace(lock, timeMs);
  // A thread that still runs may begin a wait that falls due before `timeMs`.
  awaitOthers(lock);
  // A ring ends the wait at the time of the ring: the rest of the way is not advanced.
  while (isEndedP == nullptr || !*isEndedP)
    if (!runNextDue(lock, timeMs)) {
      moveTo(timeMs);
      return;
    }
}

bool Core::runNextDue(Lock& lock, std::int64_t limitMs) {
  constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max();
  const std::int64_t callDue = calls.empty() ? kNever : calls.begin()->first;
  const std::int64_t sleeperDue = sleepers.empty() ? kNever : (*sleepers.begin())->dueMs;
  const std::int64_t due = std::min(callDue, sleeperDue);
  if (due > limitMs) return false;
  moveTo(due);
  // At one time calls come first, so that a reader whose wait ends now finds the event delivered now.
  if (callDue <= sleeperDue) {
    const std::function<void()> call = std::move(calls.begin()->second);
    // Taken out before it runs: it may schedule the next one, or throw through the advance.
    calls.erase(calls.begin());
    lock.unlock();
    call();
    lock.lock();
  } else {
    release(**sleepers.begin());
  }
  awaitOthers(lock);
  return true;
}

void Core::awaitOthers(Lock& lock) {
  // Nearly always, and then the machine's time need not be read for the end of the patience.
  if (isQuiet()) return;
  if (quiet.wait_for(lock, patience, [this] { return isQuiet(); })) return;
  // Going on is better than hanging for ever: the run counts the stall and its result shows it.
  ++stalls;
  std::fprintf(stderr, "clock: at %lld ms a woken thread neither waits again nor ends\n",
               static_cast<long long>(replayMs));
}

}  // namespace standin::clock
