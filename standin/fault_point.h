/// Faults on demand: every operation of a stand-in counts its calls and can be ordered to fail or to
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

/// What an operation throws when a fault of that kind was ordered.
class InjectedFault : public std::runtime_error {
 public:
  explicit InjectedFault(const std::string& operation) : std::runtime_error("told to throw: " + operation) {}
};

/// The fault that a test orders of an operation.
struct FaultOrder {
  Misbehaviour kind = Misbehaviour::kNone;
  std::uint64_t fromCall = 1;  ///< counted from the order on; 1 is the next call
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
    Operation& operation = mOperations[index];
    ++operation.calls;
    if (operation.order.kind == Misbehaviour::kNone) return false;
    ++operation.callsSinceOrder;
    const FaultOrder order = operation.order;
    if (operation.callsSinceOrder < order.fromCall) return false;
    if (order.isOnce) operation.order = {};
    if (order.kind == Misbehaviour::kThrow) throw InjectedFault(operation.name);
    return true;
  }

  /// Orders a fault of the operation; an order of kind kNone ends it. False when there is no such
  /// operation, or when it is to fail and cannot.
  bool order(std::string_view name, const FaultOrder& order) {
    const std::lock_guard lock(mMutex);
    for (Operation& operation : mOperations) {
      if (name != operation.name) continue;
      if (order.kind == Misbehaviour::kFail && !operation.canFail) return false;
      operation.order = order;
      operation.callsSinceOrder = 0;
      return true;
    }
    return false;
  }

  void clear() {
    const std::lock_guard lock(mMutex);
    for (Operation& operation : mOperations) operation = {operation.name, operation.canFail, {}, 0, 0};
  }

  /// Calls counted since the last clear(); 0 for an unknown name.
  std::uint64_t calls(std::string_view name) const {
    const std::lock_guard lock(mMutex);
    for (const Operation& operation : mOperations)
      if (name == operation.name) return operation.calls;
    return 0;
  }

  std::vector<std::string> names() const {
    const std::lock_guard lock(mMutex);
    std::vector<std::string> result;
    for (const Operation& operation : mOperations) result.emplace_back(operation.name);
    return result;
  }

  bool canFail(std::string_view name) const {
    const std::lock_guard lock(mMutex);
    for (const Operation& operation : mOperations)
      if (name == operation.name) return operation.canFail;
    return false;
  }

 private:
  struct Operation {
    const char* name;
    bool canFail;
    FaultOrder order;
    std::uint64_t calls;
    std::uint64_t callsSinceOrder;
  };

  mutable std::mutex mMutex;
  std::deque<Operation> mOperations;
};

}  // namespace standin

#endif
