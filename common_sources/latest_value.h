/// Passes the newest value of one thread to another, whole. Neither thread ever waits for the other.
#ifndef COMMON_SOURCES_LATEST_VALUE_H
#define COMMON_SOURCES_LATEST_VALUE_H

#include <array>
#include <atomic>
#include <cassert>
#include <cstdint>

/// One writing thread, one reading thread. Triple buffer: each side exchanges its slot with the newest
/// finished one.
template <typename T>
class LatestValue {
 public:
  /// Writing thread.
  void store(const T& value) {
    assert(mWriteIndex < mSlots.size() && "index of the writing thread's slot");
    mSlots[mWriteIndex] = value;
    mWriteIndex =
        mMiddle.exchange(static_cast<std::uint8_t>(mWriteIndex | kFresh), std::memory_order_acq_rel) &
        kIndexMask;
  }

  /// Reading thread. The value last stored, or T{} before the first.
  const T& load() {
    if (mMiddle.load(std::memory_order_relaxed) & kFresh)
      mReadIndex = mMiddle.exchange(mReadIndex, std::memory_order_acq_rel) & kIndexMask;
    assert(mReadIndex < mSlots.size() && "index of the reading thread's slot");
    return mSlots[mReadIndex];
  }

 private:
  static constexpr std::uint8_t kFresh = 4;
  static constexpr std::uint8_t kIndexMask = 3;

  std::array<T, 3> mSlots{};
  std::uint8_t mWriteIndex = 0;
  std::atomic<std::uint8_t> mMiddle{1};
  std::uint8_t mReadIndex = 2;
};

#endif
