/// The process's pthread_create: the system's, after which a replay may let the new thread run first.
#include "clock_core.h"

#include <dlfcn.h>
#include <pthread.h>

namespace standin::clock {
namespace {

#ifdef __SANITIZE_THREAD__
/// The thread sanitizer's own pthread_create calls this one, and lets the new thread go only after that has
/// returned: waiting for it here would never end.
constexpr bool kMayWaitForThread = false;
#else
constexpr bool kMayWaitForThread = true;
#endif

void threadCreated() {
  if (!kMayWaitForThread) return;
  {
    const Locked core;
    if (!core->isSettlingNewThreads || !core->isReplayMain()) return;
  }
  // Without the lock: the new thread needs it for its first wait.
  if (settle()) return;
  const Locked core;
  ++core->stalls;
}

}  // namespace
}  // namespace standin::clock

/// This library comes before the system's in the search for the name, so a module that is loaded later uses
/// it too.
extern "C" __attribute__((visibility("default"))) int pthread_create(pthread_t* thread,
                                                                     const pthread_attr_t* attributes,
                                                                     void* (*body)(void*),
                                                                     void* argument) noexcept {
  using Create = int (*)(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
  // The next definition after this library: the C library, or a sanitizer that wraps it.
  static const auto create = reinterpret_cast<Create>(dlsym(RTLD_NEXT, "pthread_create"));
  const int status = create(thread, attributes, body, argument);
  if (status == 0) standin::clock::threadCreated();
  return status;
}
