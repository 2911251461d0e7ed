#include "util/mutex.h"

#include "util/console.h"
#include "util/threads.h"

#include <cerrno>
#include <cstring>
#include <new>
#include <string>

namespace {

using Print = void (*)(std::string_view) noexcept;

/// Prints `before`, the name, `after`, the thread, `end` and the reason that errno gives. A text that finds
/// no memory is dropped: a lock must not end the process for want of a diagnostic.
void printFailure(Print print, std::string_view before, std::string_view name, std::string_view after,
                  std::string_view end) noexcept try {
  // First: building the text may change errno.
  const int code = errno;
  std::string text(before);
  text.append(name).append(after).append(std::to_string(currentThreadId())).append(end);
  text.append("errno = ").append(std::to_string(code)).append(", error: ").append(std::strerror(code));
  print(text);
} catch (const std::bad_alloc&) {
}

/// A signal that ends the wait must not let a second thread in.
int waitFor(sem_t& semaphore) {
  int result = 0;
  do {
    result = sem_wait(&semaphore);
  } while (result != 0 && errno == EINTR);
  return result;
}

/// What the semaphore operations return for something that isn't a semaphore.
int refuse() {
  errno = EINVAL;
  return -1;
}

}  // namespace

Mutex::Mutex(std::string_view name) : mName(std::string(name) + "_" + std::to_string(currentProcessId())) {
  // Not shared between processes, count 1.
  mIsInitialised = sem_init(&mSemaphore, 0, 1) == 0;
  if (mIsInitialised) return;
  printFailure(printLine, "Mutex::Mutex(): **** Error initializing semaphore", "", " by thread ", "! **** ");
}

Mutex::~Mutex() {
  const int result = mIsInitialised ? sem_destroy(&mSemaphore) : refuse();
  if (result == 0) return;
  printFailure(printLine, "Mutex::~Mutex(): Semaphore '", name(), "' (OS X ID not available) of thread ",
               " could not be destroyed!");
}

int Mutex::lock() noexcept {
  // Before the wait, so that the hint also shows a thread that waits.
  mIsLocked.store(true, std::memory_order_relaxed);
  const int result = mIsInitialised ? waitFor(mSemaphore) : refuse();
  if (result != 0)
    printFailure(printLine, "Mutex::lock(): **** Error locking semaphore '", name(), "' by thread ",
                 "! **** ");
  return result;
}

int Mutex::unlock() noexcept {
  const int result = mIsInitialised ? sem_post(&mSemaphore) : refuse();
  if (result != 0)
    // On standard error, unlike the others; stream and text are fixed.
    printFailure(printErrorLine, "Mutex::unlock(): **** Error unlocking semaphore '", name(), "' by thread ",
                 "'! **** ");
  // After a failure too. The flag is a hint and protects nothing.
  mIsLocked.store(false, std::memory_order_relaxed);
  return result;
}
