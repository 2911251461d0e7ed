#include "workbench/running/host_loop.h"

#include "standin_clock.h"
#include "workbench/platform/interruption.h"
#include "workbench/running/guarded.h"

#include <algorithm>
#include <cassert>

namespace workbench {

namespace clock = standin::clock;

namespace {

// Short enough for Ctrl-C to seem immediate, long enough not to keep a core busy.
constexpr std::int64_t kLongestRealWaitMs = 50;

}  // namespace

void HostLoop::run(const Progress& progress) {
  assert(clock::isMainThread() && "the host loop runs on the main thread");
  // In a replay nothing of the host changes while time alone advances: an idle week has millions of
  // such advances.
  const bool isLookedAtAlways = clock::kind() == clock::Kind::kReal;
  bool isChanged = true;
  while (true) {
    if (progress && (isChanged || isLookedAtAlways)) progress(clock::nowMs(), mSession.endMs);
    if (const char* const wish = interruption())
      throw Interrupted("the run was ended by " + std::string(wish) + " at " +
                        std::to_string(clock::nowMs()) + " ms");
    // Does not move time, but delivers the device's events that are due: they come before everything else of
    // that time.
    clock::advanceTo(clock::nowMs());
    // One step, then again from the top: each may have queued a text or used time.
    isChanged = runQueuedText() || runTimer() || runUserEvent();
    if (isChanged) continue;
    if (isOver()) return;
    clock::advanceTo(nextTime());
  }
}

bool HostLoop::runQueuedText() {
  bool isRun = false;
  guarded("a queued command", mProblems, [&isRun] {
    // A command that throws has left the queue, so the loop must look again.
    isRun = true;
    isRun = standin::host::runQueuedText();
  });
  if (isRun) mSurroundings.recorder.noteSelection();
  return isRun;
}

bool HostLoop::runTimer() {
  const auto due = clock::nextTimer();
  // A drawing call may have taken the clock past the user's next event. That event then comes before timers
  // that were due later.
  if (!due || *due > clock::nowMs() || *due > nextUserTime().value_or(mSession.endMs)) return false;
  guarded("a timer procedure", mProblems, [] { clock::runDueTimer(); });
  return true;
}

bool HostLoop::runUserEvent() {
  const auto due = nextUserTime();
  if (!due || *due > clock::nowMs()) return false;
  // Counted before it is performed, so that an event that throws is not performed again.
  const TimedUserAction& event = mSession.user[mNextUser++];
  guarded("a command of the session's line " + std::to_string(event.line), mProblems,
          [this, &event] { perform(event, mSession, mSurroundings); });
  mSurroundings.recorder.noteSelection();
  return true;
}

bool HostLoop::isOver() const {
  // In real time the device's events arrive on another thread and may be late, so they are waited for.
  return mNextUser == mSession.user.size() && clock::nowMs() >= mSession.endMs && mDevice.isDone();
}

std::optional<std::int64_t> HostLoop::nextUserTime() const {
  if (mNextUser == mSession.user.size()) return std::nullopt;
  return mSession.user[mNextUser].timeMs;
}

std::int64_t HostLoop::nextTime() const {
  // The device's events need no place here: advancing the clock delivers them on the way.
  const std::int64_t next = nextUserTime().value_or(mSession.endMs);
  const std::int64_t due = std::min(next, clock::nextTimer().value_or(next));
  // In real time a long wait must not keep the user from ending the program.
  return clock::kind() == clock::Kind::kReal ? std::min(due, clock::nowMs() + kLongestRealWaitMs) : due;
}

}  // namespace workbench
