/// How every operation of the host begins: the call is counted, its thread checked, and an injected fault
/// carried out.
#ifndef STANDIN_OBJECTARX_OPERATION_H
#define STANDIN_OBJECTARX_OPERATION_H

#include "standin/objectarx/counts.h"
#include "standin/operation.h"

#include <cassert>
#include <mutex>

namespace standin::host {

using standin::Result;

FaultRegistry& faultRegistry();

/// An operation of the host, by the name that a module calls it by.
using Operation = OperationOf<faultRegistry>;

/// Guards all that the host holds. Recursive: an operation may call another.
std::recursive_mutex& hostMutex();

/// Begins all counts anew, ends all faults and makes the calling thread the main thread. Only while the
/// host's lock is held.
void beginCounting();
/// What has been counted since. Only while the host's lock is held.
Counts& runningCounts();

/// The calling thread began the counting.
bool isMainThread();

/// One call of an operation. Any thread; a call off the main thread is counted and named, then carried out.
/// Holds the host's lock, so that what such a call does is no race, until leave() or the end.
class Call {
 public:
  /// Throws InjectedFault when the operation is to throw; nothing has happened by then.
  explicit Call(const Operation& operation);

  /// The operation must report a failure and change nothing.
  bool isToFail() const { return mIsToFail; }
  /// Before anything outside the host is called: that may wait for another thread.
  void leave() {
    assert(mLock.owns_lock() && "a call leaves the host once");
    mLock.unlock();
  }

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
