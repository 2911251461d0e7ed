// What the compiler calls around the first run of a local static's initialiser. Several threads may come to
// one; the first runs it, the others wait. Microsoft's protocol: the guard is 0 before, -1 meanwhile, and
// after that the count of initialisations when it ended, which a thread that has seen that count need not
// look at again.
#include <windows.h>

extern "C" {

thread_local int _Init_thread_epoch = (-2147483647 - 1);
}

namespace {

constexpr int kUninitialised = 0;
constexpr int kBeingInitialised = -1;
constexpr int kFirstEpoch = -2147483647 - 1;

SRWLOCK theLock = SRWLOCK_INIT;
CONDITION_VARIABLE theEnd = CONDITION_VARIABLE_INIT;
int theEpoch = kFirstEpoch;

}  // namespace

extern "C" void _Init_thread_header(int* guardP) {
  AcquireSRWLockExclusive(&theLock);
  while (*guardP == kBeingInitialised) SleepConditionVariableSRW(&theEnd, &theLock, INFINITE, 0);
  if (*guardP == kUninitialised)
    *guardP = kBeingInitialised;
  else
    _Init_thread_epoch = theEpoch;
  ReleaseSRWLockExclusive(&theLock);
}

extern "C" void _Init_thread_footer(int* guardP) {
  AcquireSRWLockExclusive(&theLock);
  *guardP = ++theEpoch;
  _Init_thread_epoch = theEpoch;
  ReleaseSRWLockExclusive(&theLock);
  WakeAllConditionVariable(&theEnd);
}

/// The initialiser threw: the next that comes runs it again.
extern "C" void _Init_thread_abort(int* guardP) {
  AcquireSRWLockExclusive(&theLock);
  *guardP = kUninitialised;
  ReleaseSRWLockExclusive(&theLock);
  WakeAllConditionVariable(&theEnd);
}
