/// A named semaphore of count one. Any thread may unlock it, not only the one that locked it. Its diagnostics
/// go to the standard streams, never to the log: the log depends on it. A diagnostic that finds no memory is
/// dropped. A forked child has a copy of its own, locked for good if another thread held it at that moment.
/// Any thread.
#ifndef UTIL_MUTEX_H
#define UTIL_MUTEX_H

#include "util/lock_name.h"

#include <semaphore.h>

#include <atomic>
#include <string_view>

class Mutex {
 public:
  /// The full name is `name`, "_" and the process id, of which the first 32 characters are kept. A semaphore
  /// that cannot be made is reported on standard output, and the object stays uninitialised.
  explicit Mutex(std::string_view name);
  /// A failure is reported on standard output.
  ~Mutex();
  Mutex(const Mutex&) = delete;
  Mutex& operator=(const Mutex&) = delete;

  /// Waits until the semaphore is free and takes it. 0 on success; otherwise, an uninitialised object
  /// included, the failure is reported on standard output and nothing has been taken.
  int lock() noexcept;

  /// Frees the semaphore; 0 on success. A failure is reported on standard error.
  int unlock() noexcept;

  /// The name as it is kept: at most 32 characters.
  std::string_view name() const { return mName.text(); }
  bool isInitialised() const { return mIsInitialised; }
  /// A hint for diagnostics: true from the moment a thread starts to wait in lock() until the next unlock().
  bool isLocked() const { return mIsLocked.load(std::memory_order_relaxed); }

 private:
  sem_t mSemaphore = {};
  LockName mName;
  bool mIsInitialised = false;
  std::atomic<bool> mIsLocked{false};
};

/// Locks a `Mutex` against a second thread and reports each step on standard output; takes 9 s.
void testMutex();

/// Body of that thread. `mutexP` is the `Mutex`; the result is null.
void* startSecondThread(void* mutexP);

#endif
