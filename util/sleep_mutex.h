/// A polled lock that is taken over by force when its holder keeps it too long. The flag is tested and set
/// in two steps, so two threads that time out together may both take the lock; this is intended. Any
/// thread.
#ifndef UTIL_SLEEP_MUTEX_H
#define UTIL_SLEEP_MUTEX_H

#include "util/lock_name.h"

#include <atomic>
#include <cstdint>
#include <string_view>

class SleepMutex {
 public:
  /// Keeps the first 32 characters of `name`, and reports its construction on standard output.
  explicit SleepMutex(std::string_view name);
  /// Reports its destruction on standard output.
  ~SleepMutex();
  SleepMutex(const SleepMutex&) = delete;
  SleepMutex& operator=(const SleepMutex&) = delete;

  /// Takes the lock: at once when it is free, otherwise as soon as a poll finds it free, and after 200 polls
  /// of 50 ms in any case, which is reported on standard output. A holder that unlocks exactly at the 200th
  /// poll is reported as forced, too. Returns 0.
  int lock();

  /// Unlocks. Returns 0.
  int unlock();

  std::string_view name() const { return mName.text(); }
  bool isLocked() const { return mIsLocked.load(std::memory_order_relaxed); }

 private:
  std::int32_t mPollIntervalMs = 50;
  std::int32_t mTimeOutMs = 10000;
  std::int32_t mMaxPolls = mTimeOutMs / mPollIntervalMs;
  LockName mName;
  std::atomic<bool> mIsLocked{false};
};

#endif
