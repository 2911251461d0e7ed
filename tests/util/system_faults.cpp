#include "tests/util/system_faults.h"

#include <fcntl.h>
#include <pthread.h>
#include <semaphore.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

SystemCall SystemFault::sFailing = SystemCall::kNone;
int SystemFault::sErrno = 0;
int SystemFault::sTimes = 0;

bool SystemFault::strikes(SystemCall call) {
  if (call != sFailing || sTimes == 0) return false;
  if (sTimes > 0) --sTimes;
  errno = sErrno;
  return true;
}

int EndsAtFileOperation::sLeft = -1;

void EndsAtFileOperation::count() {
  if (sLeft == 0) _exit(kStatus);
  if (sLeft > 0) --sLeft;
}

void* (*HeldThread::sBody)(void*) = nullptr;
void* HeldThread::sArgumentP = nullptr;
bool HeldThread::sIsHolding = false;

bool HeldThread::takes(void* (*body)(void*), void* argumentP) {
  if (!sIsHolding) return false;
  sBody = body;
  sArgumentP = argumentP;
  return true;
}

namespace {

void* doNothing(void*) {
  return nullptr;
}

}  // namespace

// The linker gives the module these instead of the library's (option --wrap).
extern "C" {

int __real_sem_init(sem_t*, int, unsigned);
int __wrap_sem_init(sem_t* semaphoreP, int isShared, unsigned value) {
  return SystemFault::strikes(SystemCall::kSemInit) ? -1 : __real_sem_init(semaphoreP, isShared, value);
}

int __real_sem_wait(sem_t*);
int __wrap_sem_wait(sem_t* semaphoreP) {
  return SystemFault::strikes(SystemCall::kSemWait) ? -1 : __real_sem_wait(semaphoreP);
}

int __real_sem_post(sem_t*);
int __wrap_sem_post(sem_t* semaphoreP) {
  return SystemFault::strikes(SystemCall::kSemPost) ? -1 : __real_sem_post(semaphoreP);
}

int __real_sem_destroy(sem_t*);
int __wrap_sem_destroy(sem_t* semaphoreP) {
  return SystemFault::strikes(SystemCall::kSemDestroy) ? -1 : __real_sem_destroy(semaphoreP);
}

int __real_pthread_create(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
int __wrap_pthread_create(pthread_t* threadP, const pthread_attr_t* attributesP, void* (*body)(void*),
                          void* argP) {
  if (SystemFault::strikes(SystemCall::kPthreadCreate)) return EAGAIN;
  if (!HeldThread::takes(body, argP)) return __real_pthread_create(threadP, attributesP, body, argP);
  return __real_pthread_create(threadP, attributesP, doNothing, nullptr);
}

#ifndef _WIN32
int __real_open(const char*, int, ...);
int __wrap_open(const char* pathP, int flags, mode_t mode) {
  EndsAtFileOperation::count();
  return SystemFault::strikes(SystemCall::kOpen) ? -1 : __real_open(pathP, flags, mode);
}

/// A write that is to fail for want of room first writes half of what it is given.
ssize_t __real_write(int, const void*, size_t);
ssize_t __wrap_write(int handle, const void* dataP, size_t size) {
  EndsAtFileOperation::count();
  if (!SystemFault::strikes(SystemCall::kWrite)) return __real_write(handle, dataP, size);
  if (errno != ENOSPC || size < 2) return -1;
  return __real_write(handle, dataP, size / 2);
}

int __real_fsync(int);
int __wrap_fsync(int handle) {
  EndsAtFileOperation::count();
  return SystemFault::strikes(SystemCall::kFsync) ? -1 : __real_fsync(handle);
}

int __real_rename(const char*, const char*);
int __wrap_rename(const char* fromP, const char* toP) {
  EndsAtFileOperation::count();
  return SystemFault::strikes(SystemCall::kRename) ? -1 : __real_rename(fromP, toP);
}
#endif
}
