#include "clock_core.h"
#include "process_tasks.h"

#include <utility>

namespace standin::clock {

void Clock::schedule(std::int64_t timeMs, std::function<void()> call) {
  Lock lock(mMutex);
  mCalls.emplace(timeMs, std::move(call));
  if (mKind != Kind::kReal) return;
  if (!mRunner.joinable()) startRunner(lock);
  mRunnerNews.notify_all();
}

/// Returns when the thread has told its id: until then it would be counted among the others.
void Clock::startRunner(Lock& lock) {
  mIsRunnerToEnd = false;
  mRunnerTask = 0;
  mRunner = std::thread([this] { runCalls(); });
  mRunnerNews.wait(lock, [this] { return mRunnerTask != 0; });
}

void Clock::endRunner() {
  {
    const Lock lock(mMutex);
    mIsRunnerToEnd = true;
  }
  mRunnerNews.notify_all();
  if (mRunner.joinable()) mRunner.join();
}

void Clock::runCalls() {
  Lock lock(mMutex);
  mRunnerTask = currentTask();
  mRunnerNews.notify_all();
  while (!mIsRunnerToEnd) {
    if (mCalls.empty()) {
      mRunnerNews.wait(lock);
    } else if (mCalls.begin()->first > now()) {
      mRunnerNews.wait_until(lock, realTimeOf(mCalls.begin()->first));
    } else {
      const std::function<void()> call = std::move(mCalls.begin()->second);
      mCalls.erase(mCalls.begin());
      lock.unlock();
      call();
      lock.lock();
    }
  }
}

}  // namespace standin::clock
