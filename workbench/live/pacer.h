/// Makes the replay clock keep pace with the wall: before virtual time moves, real time has come as far.
///
/// The live page runs on the replay clock, so that whatever is done happens at a time of the session and the
/// recorded session plays back exactly. Main thread only.
#ifndef WORKBENCH_PACER_H
#define WORKBENCH_PACER_H

#include <chrono>
#include <cstdint>
#include <thread>

namespace workbench {

class Pacer {
 public:
  using Clock = std::chrono::steady_clock;

  /// Virtual time `nowMs` is now.
  void start(std::int64_t nowMs) { mZero = Clock::now() - std::chrono::milliseconds(nowMs); }

  /// Returns when real time has come to `timeMs`.
  void await(std::int64_t timeMs) {
    if (mIsHurrying) return;
    const Clock::time_point until = at(timeMs);
    const Clock::duration late = Clock::now() - until;
    // A machine that was busy or asleep must not make the drawing jump to catch up: that time is lost.
    if (late > kMostToCatchUp) mZero += late;
    std::this_thread::sleep_until(at(timeMs));
  }

  Clock::time_point at(std::int64_t timeMs) const { return mZero + std::chrono::milliseconds(timeMs); }
  std::int64_t nowMs() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - mZero).count();
  }

  /// While true, virtual time runs ahead: the waits of an unload are nothing that the user should wait for.
  void setHurrying(bool isHurrying) { mIsHurrying = isHurrying; }

 private:
  /// Passes that were late by less come a little sooner after one another until they are on time again.
  static constexpr std::chrono::milliseconds kMostToCatchUp{50};

  Clock::time_point mZero = Clock::now();
  bool mIsHurrying = false;
};

}  // namespace workbench

#endif
