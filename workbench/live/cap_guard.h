/// Who holds the cap, and when it has to spring back. Pure logic; the caller passes the time.
///
/// One page drives, the others watch. A page that drives and is gone, asleep or silent while the cap is
/// deflected lets the cap go: nothing moves on by itself.
#ifndef WORKBENCH_CAP_GUARD_H
#define WORKBENCH_CAP_GUARD_H

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>

namespace workbench {

class CapGuard {
 public:
  using Time = std::chrono::steady_clock::time_point;
  using Axes = std::array<std::int16_t, 6>;

  /// A page that is awake sends a message at least five times in this.
  static constexpr std::chrono::milliseconds kLongestSilence{500};
  static constexpr std::uint64_t kNobody = 0;

  /// The first page drives.
  void opened(std::uint64_t page) {
    if (mDriver == kNobody) mDriver = page;
  }
  /// True when the cap has to be let go.
  bool closed(std::uint64_t page) {
    if (mDriver != page) return false;
    mDriver = kNobody;
    return letGo();
  }
  /// The page drives from now on. True when the cap has to be let go: what the other page did with it ends.
  bool takenOver(std::uint64_t page) {
    if (mDriver == page) return false;
    mDriver = page;
    return letGo();
  }
  void heard(std::uint64_t page, Time now) {
    if (page == mDriver) mLastHeard = now;
  }
  void moved(const Axes& axes, Time now) {
    mIsDeflected = std::any_of(axes.begin(), axes.end(), [](std::int16_t value) { return value != 0; });
    mLastHeard = now;
  }
  /// True when the driver has been silent for too long and the cap has to be let go.
  bool looked(Time now) { return mIsDeflected && now - mLastHeard > kLongestSilence && letGo(); }

  std::uint64_t driver() const { return mDriver; }

 private:
  bool letGo() {
    const bool wasDeflected = mIsDeflected;
    mIsDeflected = false;
    return wasDeflected;
  }

  std::uint64_t mDriver = kNobody;
  bool mIsDeflected = false;
  Time mLastHeard;
};

}  // namespace workbench

#endif
