/// How every operation of the host begins: the call is counted, its thread checked, and an ordered fault
/// injected.
#ifndef STANDIN_OBJECTARX_OPERATION_H
#define STANDIN_OBJECTARX_OPERATION_H

#include "standin/operation.h"

#include <mutex>

namespace standin::host {

using standin::Result;

FaultRegistry& faultRegistry();

/// An operation of the host, by the name that a module calls it by.
using Operation = OperationOf<faultRegistry>;

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
