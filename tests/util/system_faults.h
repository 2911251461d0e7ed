/// Makes an operation of the system fail while it lives.
#ifndef TESTS_UTIL_SYSTEM_FAULTS_H
#define TESTS_UTIL_SYSTEM_FAULTS_H

enum class SystemCall {
  kNone,
  kSemInit,
  kSemWait,
  kSemPost,
  kSemDestroy,
  kPthreadCreate,
  kOpen,
  kWrite,
  kFsync,
  kRename
};

/// `sFailing` fails with `sErrno`, `sTimes` times (or as long as the object lives, when negative).
class SystemFault {
 public:
  SystemFault(SystemCall call, int errnoValue, int times = -1) {
    sFailing = call;
    sErrno = errnoValue;
    sTimes = times;
  }
  ~SystemFault() { sFailing = SystemCall::kNone; }
  SystemFault(const SystemFault&) = delete;
  SystemFault& operator=(const SystemFault&) = delete;

  /// For the wrapped operations: whether this call is to fail; errno is set then.
  static bool strikes(SystemCall call);

 private:
  static SystemCall sFailing;
  static int sErrno;
  static int sTimes;
};

/// Ends the process at one of the file operations that it would make next, as if it were killed there. Native
/// programs only.
class EndsAtFileOperation {
 public:
  static constexpr int kStatus = 42;

  explicit EndsAtFileOperation(int index) { sLeft = index; }
  ~EndsAtFileOperation() { sLeft = -1; }
  EndsAtFileOperation(const EndsAtFileOperation&) = delete;
  EndsAtFileOperation& operator=(const EndsAtFileOperation&) = delete;

  /// For the wrapped operations.
  static void count();

 private:
  static int sLeft;
};

/// While it lives, a new thread does nothing, and what it was to do is kept here.
class HeldThread {
 public:
  HeldThread() {
    sBody = nullptr;
    sIsHolding = true;
  }
  ~HeldThread() { sIsHolding = false; }
  HeldThread(const HeldThread&) = delete;
  HeldThread& operator=(const HeldThread&) = delete;

  static void* (*body())(void*) { return sBody; }
  static void* argument() { return sArgumentP; }

  /// For the wrapped operation: whether the thread is held.
  static bool takes(void* (*body)(void*), void* argumentP);

 private:
  static void* (*sBody)(void*);
  static void* sArgumentP;
  static bool sIsHolding;
};

#endif
