/// How each stand-in declares its operations: an operation registers itself with its stand-in's
/// fault registry, counts its calls and carries out the fault that a test injected.
#ifndef STANDIN_OPERATION_H
#define STANDIN_OPERATION_H

#include "standin/fault_point.h"

#include <cstddef>

namespace standin {

/// Whether an operation's result can report a failure.
enum class Result { kTellsFailure, kTellsNothing };

/// An operation of the stand-in whose faults are in `registry`. Define it at namespace scope, so that every
/// operation is listed before the first call. Any thread.
template <FaultRegistry& (*registry)()>
class OperationOf {
 public:
  OperationOf(const char* name, Result result)
      : mNameP(name), mIndex(registry().add(name, result == Result::kTellsFailure)) {}
  OperationOf(const OperationOf&) = delete;
  OperationOf& operator=(const OperationOf&) = delete;

  const char* name() const { return mNameP; }

  /// Counts a call. True when this call is to fail; throws InjectedFault when it is to throw.
  bool hit() const { return registry().hit(mIndex); }

 private:
  const char* mNameP;
  std::size_t mIndex;
};

}  // namespace standin

#endif
