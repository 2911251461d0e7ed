/// How every operation of the host begins: it is counted, it minds the thread, and it misbehaves when told
/// to.
#ifndef STANDIN_OPERATION_H
#define STANDIN_OPERATION_H

#include <cstddef>
#include <mutex>

namespace standin::host {

/// Whether an operation's result can tell of a failure.
enum class Result { kTellsFailure, kTellsNothing };

/// An operation by name. Define at namespace scope, so that all of them are listed before the first call.
class Operation {
 public:
  Operation(const char* name, Result result);

  const char* name() const { return mNameP; }
  std::size_t index() const { return mIndex; }

 private:
  const char* mNameP;
  std::size_t mIndex;
};

/// One call of an operation. Any thread; a call off the main thread is counted and named, then carried out.
/// Holds the host's lock, so that what such a call does is no race, until leave() or the end.
class Call {
 public:
  /// Throws InjectedFault when the operation is to throw; nothing has happened by then.
  explicit Call(const Operation& operation);

  /// The operation is to answer a failure and change nothing.
  bool isToFail() const { return mIsToFail; }
  /// Before anything outside the host is called: what is called may wait for another thread.
  void leave() { mLock.unlock(); }

 private:
  std::unique_lock<std::recursive_mutex> mLock;
  bool mIsToFail = false;
};

/// Counts a broken rule. Only while the host's lock is held.
void breach(const char* operation, const char* what);
inline void breach(const Operation& operation, const char* what) {
  breach(operation.name(), what);
}

}  // namespace standin::host

#endif
