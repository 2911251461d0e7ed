/// Faults on demand: every operation of a stand-in counts its calls and can be made to fail or to
/// throw, once or from the nth call on. Any thread.
#ifndef STANDIN_FAULT_POINT_H
#define STANDIN_FAULT_POINT_H

#include <cassert>
#include <cstdint>
#include <deque>
#include <mutex>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace standin {

enum class Misbehaviour { kNone, kFail, kThrow };

/// What an operation throws when a fault of that kind was injected.
class InjectedFault : public std::runtime_error {
 public:
  explicit InjectedFault(const std::string& operation) : std::runtime_error("told to throw: " + operation) {}
};

/// The fault that a test injects into an operation.
struct Fault {
  Misbehaviour kind = Misbehaviour::kNone;
  std::uint64_t fromCall = 1;  ///< counted from the injection on; 1 is the next call
  bool isOnce = true;          ///< only that one call, else every call from it on
};

/// The operations of one stand-in, by name.
class FaultRegistry {
 public:
  /// Adds an operation and returns its index; `canFail`: its result can report a failure.
  std::size_t add(const char* name, bool canFail) {
    const std::lock_guard lock(mMutex);
    mOperations.push_back({name, canFail, {}, 0, 0});
    return mOperations.size() - 1;
  }

  /// Counts a call. Returns true when it is to fail; throws InjectedFault when it is to throw.
  bool hit(std::size_t index) {
    const std::lock_guard lock(mMutex);
    assert(index < mOperations.size() && "an operation hits the registry that numbered it");
    FaultPoint& operation = mOperations[index];
    ++operation.calls;
    if (operation.fault.kind == Misbehaviour::kNone) return false;
    ++operation.callsSinceInjection;
    const Fault fault = operation.fault;
    if (operation.callsSinceInjection < fault.fromCall) return false;
    if (fault.isOnce) operation.fault = {};
    if (fault.kind == Misbehaviour::kThrow) throw InjectedFault(operation.name);
    return true;
  }

  /// Injects a fault into the operation; one of kind kNone ends it. False when there is no such
  /// operation, or when it is to fail and cannot.
  bool inject(std::string_view name, const Fault& fault) {
    const std::lock_guard lock(mMutex);
    for (FaultPoint& operation : mOperations) {
      if (name != operation.name) continue;
      if (fault.kind == Misbehaviour::kFail && !operation.canFail) return false;
      operation.fault = fault;
      operation.callsSinceInjection = 0;
      return true;
    }
    return false;
  }

  void clear() {
    const std::lock_guard lock(mMutex);
    for (FaultPoint& operation : mOperations) operation = {operation.name, operation.canFail, {}, 0, 0};
  }

  /// Calls counted since the last clear(); 0 for an unknown name.
  std::uint64_t calls(std::string_view name) const {
    const std::lock_guard lock(mMutex);
    for (const FaultPoint& operation : mOperations)
      if (name == operation.name) return operation.calls;
    return 0;
  }

  std::vector<std::string> names() const {
    const std::lock_guard lock(mMutex);
    std::vector<std::string> result;
    for (const FaultPoint& operation : mOperations) result.emplace_back(operation.name);
    return result;
  }

  bool canFail(std::string_view name) const {
    const std::lock_guard lock(mMutex);
    for (const FaultPoint& operation : mOperations)
      if (name == operation.name) return operation.canFail;
    return false;
  }

 private:
  struct FaultPoint {
    const char* name;
    bool canFail;
    Fault fault;
    std::uint64_t calls;
    std::uint64_t callsSinceInjection;
  };

  mutable std::mutex mMutex;
  std::deque<FaultPoint> mOperations;
};

}  // namespace standin

#endif
