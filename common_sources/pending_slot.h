/// A request that one thread stores for another: a single slot, the newest wins.
#ifndef COMMON_SOURCES_PENDING_SLOT_H
#define COMMON_SOURCES_PENDING_SLOT_H

#include <atomic>
#include <cstdint>

/// Any thread. Every request carries a stamp, so that clearing the one just executed does not lose a later
/// one, not even one of the same value.
class PendingSlot {
 public:
  struct Request {
    std::int32_t value;
    std::uint32_t stamp;
  };

  explicit PendingSlot(std::int32_t value) : mRequest(Request{value, 0}) {}

  void set(std::int32_t value) {
    Request before = mRequest.load(std::memory_order_relaxed);
    while (!mRequest.compare_exchange_weak(before, Request{value, before.stamp + 1})) {
    }
  }

  Request get() const { return mRequest.load(std::memory_order_acquire); }

  /// Replaces `executed` by `none`; does nothing when another request has come since.
  void clear(Request executed, std::int32_t none) {
    mRequest.compare_exchange_strong(executed, Request{none, executed.stamp + 1});
  }

 private:
  static_assert(std::atomic<Request>::is_always_lock_free, "a key must not make the main thread wait");
  std::atomic<Request> mRequest;
};

#endif
