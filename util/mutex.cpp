#include "util/mutex.h"

#include <cerrno>
#include <cstring>
#include <string>

#include "util/console.h"
#include "util/threads.h"

namespace {

std::string thread() {
  return std::to_string(currentThreadId());
}

std::string errnoText() {
  const int code = errno;
  return "errno = " + std::to_string(code) + ", error: " + std::strerror(code);
}

/// A signal that ends the wait must not let a second thread in.
int waitFor(sem_t& semaphore) {
  int result = 0;
  do {
    result = sem_wait(&semaphore);
  } while (result != 0 && errno == EINTR);
  return result;
}

/// What the semaphore operations answer for something that isn't a semaphore.
int refuse() {
  errno = EINVAL;
  return -1;
}

}  // namespace

Mutex::Mutex(std::string_view name) : mName(std::string(name) + "_" + std::to_string(currentProcessId())) {
  mIsInitialised = sem_init(&mSemaphore, 0, 1) == 0;
  if (mIsInitialised) return;
  const std::string reason = errnoText();
  printLine("Mutex::Mutex(): **** Error initializing semaphore by thread " + thread() + "! **** " + reason);
}

Mutex::~Mutex() {
  const int result = mIsInitialised ? sem_destroy(&mSemaphore) : refuse();
  if (result == 0) return;
  const std::string reason = errnoText();
  printLine("Mutex::~Mutex(): Semaphore '" + std::string(name()) + "' (OS X ID not available) of thread " +
            thread() + " could not be destroyed!" + reason);
}

int Mutex::lock() {
  mIsLocked.store(true, std::memory_order_relaxed);
  const int result = mIsInitialised ? waitFor(mSemaphore) : refuse();
  if (result == 0) return result;
  const std::string reason = errnoText();
  printLine("Mutex::lock(): **** Error locking semaphore '" + std::string(name()) + "' by thread " +
            thread() + "! **** " + reason);
  return result;
}

int Mutex::unlock() {
  const int result = mIsInitialised ? sem_post(&mSemaphore) : refuse();
  if (result != 0) {
    const std::string reason = errnoText();
    printErrorLine("Mutex::unlock(): **** Error unlocking semaphore '" + std::string(name()) +
                   "' by thread " + thread() + "'! **** " + reason);
  }
  mIsLocked.store(false, std::memory_order_relaxed);
  return result;
}
