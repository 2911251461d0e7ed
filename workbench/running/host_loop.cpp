#include "workbench/running/host_loop.h"

#include "standin_clock.h"
#include "workbench/input_error.h"
#include "workbench/platform/interruption.h"

#include <algorithm>
#include <cassert>
#include <exception>

namespace workbench {

namespace clock = standin::clock;

namespace {

constexpr std::int64_t kLongestRealWaitMs = 50;

}  // namespace

void guarded(const std::string& what, std::vector<std::string>& problems, const std::function<void()>& call) {
  try {
    call();
  } catch (const InputError&) {
    throw;
  } catch (const std::exception& error) {
    problems.push_back(what + " threw: " + error.what());
  } catch (...) {
    problems.push_back(what + " threw something other than a std::exception");
  }
}

void HostLoop::run(const Progress& progress) {
  assert(clock::isMainThread() && "the host loop runs on the main thread");
  while (true) {
    if (progress) progress(clock::nowMs(), mSession.endMs);
    if (const char* const wish = interruption())
      throw Interrupted("the run was ended by " + std::string(wish) + " at " +
                        std::to_string(clock::nowMs()) + " ms");
    clock::advanceTo(clock::nowMs());
    if (runQueuedText() || runTimer() || runUserEvent()) continue;
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
  if (!due || *due > clock::nowMs() || *due > nextUserTime().value_or(mSession.endMs)) return false;
  guarded("a timer procedure", mProblems, [] { clock::runDueTimer(); });
  return true;
}

bool HostLoop::runUserEvent() {
  const auto due = nextUserTime();
  if (!due || *due > clock::nowMs()) return false;
  const TimedUserAction& event = mSession.user[mNextUser++];
  guarded("a command of the session's line " + std::to_string(event.line), mProblems,
          [this, &event] { perform(event, mSession, mSurroundings); });
  mSurroundings.recorder.noteSelection();
  return true;
}

bool HostLoop::isOver() const {
  return mNextUser == mSession.user.size() && clock::nowMs() >= mSession.endMs && mDevice.isDone();
}

std::optional<std::int64_t> HostLoop::nextUserTime() const {
  if (mNextUser == mSession.user.size()) return std::nullopt;
  return mSession.user[mNextUser].timeMs;
}

std::int64_t HostLoop::nextTime() const {
  const std::int64_t next = nextUserTime().value_or(mSession.endMs);
  const std::int64_t due = std::min(next, clock::nextTimer().value_or(next));
  // In real time a long wait must not keep the user from ending the program.
  return clock::kind() == clock::Kind::kReal ? std::min(due, clock::nowMs() + kLongestRealWaitMs) : due;
}

}  // namespace workbench
