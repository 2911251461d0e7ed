#include "util/sleep_mutex.h"

#include <string>

#include "util/console.h"
#include "util/threads.h"

namespace {

void tell(const char* method, std::string_view name, const char* what) {
  printLine("SleepMutex::" + std::string(method) + ": '" + std::string(name) + "' " + what +
            std::to_string(currentThreadId()));
}

}  // namespace

SleepMutex::SleepMutex(std::string_view name) : mName(name) {
  printLine("SleepMutex::SleepMutex(): '" + std::string(this->name()) + "' constructed by thread " +
            std::to_string(currentThreadId()) + ".");
}

SleepMutex::~SleepMutex() {
  tell("~SleepMutex()", name(), "destructed by thread ");
}

int SleepMutex::lock() {
  std::int32_t count = 0;
  while (isLocked()) {
    if (count++ >= mMaxPolls) break;
    sleepMs(static_cast<std::uint32_t>(mPollIntervalMs));
  }
  if (count >= mMaxPolls) tell("lock()", name(), "forced to unlock due to timeout, called by thread ");
  mIsLocked.store(true, std::memory_order_relaxed);
  return 0;
}

int SleepMutex::unlock() {
  mIsLocked.store(false, std::memory_order_relaxed);
  return 0;
}
