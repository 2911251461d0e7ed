// The POSIX threads and semaphores that the module uses, over those of Windows. Nothing is kept for a thread
// that did not begin here, so the host's own threads lose no handle when the module is unloaded.
#include <errno.h>
#include <pthread.h>
#include <semaphore.h>
#include <windows.h>

#include <new>

namespace {

struct Start {
  void* (*body)(void*);
  void* argument;
};

DWORD WINAPI run(void* startP) {
  const Start start = *static_cast<Start*>(startP);
  delete static_cast<Start*>(startP);
  start.body(start.argument);
  return 0;
}

HANDLE handleOf(pthread_t thread) {
  return reinterpret_cast<HANDLE>(thread);
}

SRWLOCK* lockOf(sem_t* semaphore) {
  return reinterpret_cast<SRWLOCK*>(&semaphore->lock);
}

CONDITION_VARIABLE* conditionOf(sem_t* semaphore) {
  return reinterpret_cast<CONDITION_VARIABLE*>(&semaphore->condition);
}

}  // namespace

int pthread_create(pthread_t* thread, const pthread_attr_t* /*attributes*/, void* (*body)(void*),
                   void* argument) {
  auto* const startP = new (std::nothrow) Start{body, argument};
  if (startP == nullptr) return ENOMEM;
  const HANDLE handle = CreateThread(nullptr, 0, run, startP, 0, nullptr);
  if (handle == nullptr) {
    delete startP;
    return EAGAIN;
  }
  *thread = reinterpret_cast<pthread_t>(handle);
  return 0;
}

/// The thread's result is not kept: nobody asks for it.
int pthread_join(pthread_t thread, void** result) {
  if (WaitForSingleObject(handleOf(thread), INFINITE) != WAIT_OBJECT_0) return EINVAL;
  CloseHandle(handleOf(thread));
  if (result != nullptr) *result = nullptr;
  return 0;
}

int pthread_detach(pthread_t thread) {
  return CloseHandle(handleOf(thread)) ? 0 : EINVAL;
}

// A semaphore that is free is taken without a call of the system.

int sem_init(sem_t* semaphore, int /*isShared*/, unsigned value) {
  *semaphore = {nullptr, nullptr, value};
  return 0;
}

int sem_destroy(sem_t* /*semaphore*/) {
  return 0;
}

int sem_wait(sem_t* semaphore) {
  AcquireSRWLockExclusive(lockOf(semaphore));
  while (semaphore->value == 0)
    SleepConditionVariableSRW(conditionOf(semaphore), lockOf(semaphore), INFINITE, 0);
  --semaphore->value;
  ReleaseSRWLockExclusive(lockOf(semaphore));
  return 0;
}

int sem_post(sem_t* semaphore) {
  AcquireSRWLockExclusive(lockOf(semaphore));
  ++semaphore->value;
  ReleaseSRWLockExclusive(lockOf(semaphore));
  WakeConditionVariable(conditionOf(semaphore));
  return 0;
}
