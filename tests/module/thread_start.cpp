#include "tests/module/thread_start.h"

#include <errno.h>
#include <pthread.h>

#include <atomic>

namespace {
std::atomic<int> callsUntilFailure{0};
}

void failThreadStart(int nth) {
  callsUntilFailure = nth;
}

extern "C" int __real_pthread_create(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
extern "C" int __wrap_pthread_create(pthread_t* threadP, const pthread_attr_t* attributesP,
                                     void* (*body)(void*), void* argumentP) {
  if (callsUntilFailure > 0 && --callsUntilFailure == 0) return EAGAIN;
  return __real_pthread_create(threadP, attributesP, body, argumentP);
}
