#include "util/sleep_mutex.h"

#include "util/console.h"
#include "util/threads.h"

#include <new>
#include <string>

namespace {

/// A line of this lock, which ends with the thread and `end`. One that finds no memory is dropped.
void printState(const char* method, std::string_view name, const char* what, const char* end = "") noexcept
    try {
  printLine("SleepMutex::" + std::string(method) + ": '" + std::string(name) + "' " + what +
            std::to_string(currentThreadId()) + end);
} catch (const std::bad_alloc&) {
}

}  // namespace

SleepMutex::SleepMutex(std::string_view name) : mName(name) {
  printState("SleepMutex()", this->name(), "constructed by thread ", ".");
}

SleepMutex::~SleepMutex() {
  printState("~SleepMutex()", name(), "destructed by thread ");
}

int SleepMutex::lock() {
  std::int32_t count = 0;
  // Tested here and set below, in two steps: two threads that time out together both get the lock. Intended.
  while (isLocked()) {
    if (count++ >= mMaxPolls) break;
    sleepMs(static_cast<std::uint32_t>(mPollIntervalMs));
  }
  // Also when the holder unlocked during the last poll: the count cannot distinguish the two cases.
  if (count >= mMaxPolls) printState("lock()", name(), "forced to unlock due to timeout, called by thread ");
  mIsLocked.store(true, std::memory_order_relaxed);
  return 0;
}

int SleepMutex::unlock() {
  mIsLocked.store(false, std::memory_order_relaxed);
  return 0;
}
