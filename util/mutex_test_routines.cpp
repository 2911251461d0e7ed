#include "util/console.h"
#include "util/mutex.h"
#include "util/threads.h"

#include <pthread.h>

#include <cstdint>

namespace {

// Twice what the printed text says; both are intended.
constexpr std::uint32_t kHoldMs = 4000;
/// Longer than the second thread still needs, which uses the mutex until then.
constexpr std::uint32_t kSecondThreadEndsMs = 5000;

bool startDetached(void* (*body)(void*), void* argumentP) {
  pthread_t thread;
  if (pthread_create(&thread, nullptr, body, argumentP) != 0) return false;
  pthread_detach(thread);
  return true;
}

}  // namespace

void testMutex() {
  Mutex mutex("test");
  printLine("\nSTARTING MUTEX TEST: \n");
  if (!startDetached(startSecondThread, &mutex)) printLine("testMutex(): Error creating thread!");
  printLine("testMutex(): lock mutex and hold it for 2000:");
  mutex.lock();
  sleepMs(kHoldMs);
  printLine("testMutex(): unlock mutex:");
  mutex.unlock();
  printLine("testMutex(): unlock mutex:");
  sleepMs(kSecondThreadEndsMs);
  printLine("testMutex(): ending...");
}

void* startSecondThread(void* mutexP) {
  Mutex& mutex = *static_cast<Mutex*>(mutexP);
  printLine("startSecondThread(): sleeping 1000...");
  sleepMs(1000);
  printLine("startSecondThread(): lock mutex:");
  mutex.lock();
  printLine("startSecondThread(): got mutex and hold it for 2000");
  sleepMs(2000);
  printLine("startSecondThread(): unlock mutex:");
  mutex.unlock();
  sleepMs(1000);
  printLine("startSecondThread(): ending...");
  return nullptr;
}
