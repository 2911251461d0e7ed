/// The thread that runs scheduled calls in real time.
#include "runner.h"

#include <cassert>
#include <utility>

namespace standin::clock {

void Runner::schedule(std::int64_t timeMs, std::function<void()> call) {
  {
    const std::lock_guard lock(mMutex);
    mCalls.emplace(timeMs, std::move(call));
  }
  // The new call may be earlier than the one for which the thread waits.
  mNews.notify_all();
  if (!mThread.joinable()) begin();
}

std::optional<std::int64_t> Runner::next() const {
  const std::lock_guard lock(mMutex);
  return mCalls.empty() ? std::nullopt : std::optional(mCalls.begin()->first);
}

void Runner::end() {
  assert(mThread.get_id() != std::this_thread::get_id() && "a scheduled call must not end its own thread");
  {
    const std::lock_guard lock(mMutex);
    mIsToEnd = true;
    mCalls.clear();
  }
  mNews.notify_all();
  if (mThread.joinable()) mThread.join();
  const std::lock_guard lock(mMutex);
  mThreadId = 0;
  mIsToEnd = false;
  // The last call may have scheduled another.
  mCalls.clear();
}

ThreadId Runner::threadId() const {
  const std::lock_guard lock(mMutex);
  return mThreadId;
}

/// Returns when the thread has stored its id: until then it would be counted among the threads of others.
void Runner::begin() {
  std::unique_lock lock(mMutex);
  mThread = std::thread([this] { run(); });
  mNews.wait(lock, [this] { return mThreadId != 0; });
}

void Runner::run() {
  std::unique_lock lock(mMutex);
  mThreadId = currentThread();
  mNews.notify_all();
  while (!mIsToEnd) {
    if (mCalls.empty()) {
      mNews.wait(lock);
    } else if (mCalls.begin()->first > mTime.nowMs()) {
      mNews.wait_until(lock, mTime.at(mCalls.begin()->first));
    } else {
      const std::function<void()> call = std::move(mCalls.begin()->second);
      mCalls.erase(mCalls.begin());
      // Unlocked: the call may schedule another one.
      lock.unlock();
      call();
      lock.lock();
    }
  }
}

}  // namespace standin::clock
