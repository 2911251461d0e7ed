/// How fast the module works: passes in a second, computing time of a pass, time of a tick. Main thread only.
#ifndef WORKBENCH_METERS_H
#define WORKBENCH_METERS_H

#include <algorithm>
#include <chrono>
#include <cstdint>

namespace workbench {

class Meters {
 public:
  using Time = std::chrono::steady_clock::time_point;

  struct Reading {
    double passesPerSecond = 0;
    double passMs = 0;  ///< computing time of the longest pass
    double tickMs = 0;  ///< of the longest tick, with the pictures that it draws
    bool isAtRest() const { return passesPerSecond == 0 && tickMs < 1; }
  };

  void tickTook(std::chrono::nanoseconds time) { mTick = std::max(mTick, time); }
  /// Between two waits of a tick.
  void passTook(std::chrono::nanoseconds time) { mPass = std::max(mPass, time); }
  void passed(std::uint64_t passes) { mPasses += passes; }

  /// Whether it is time for a reading.
  bool isDue(Time now) const { return now - mBegin >= std::chrono::milliseconds(500); }
  Reading read(Time now) {
    const double seconds = std::chrono::duration<double>(now - mBegin).count();
    const Reading reading{static_cast<double>(mPasses) / seconds, ms(mPass), ms(mTick)};
    *this = {};
    mBegin = now;
    return reading;
  }

 private:
  static double ms(std::chrono::nanoseconds time) {
    return std::chrono::duration<double, std::milli>(time).count();
  }

  Time mBegin = std::chrono::steady_clock::now();
  std::uint64_t mPasses = 0;
  std::chrono::nanoseconds mPass{0};
  std::chrono::nanoseconds mTick{0};
};

}  // namespace workbench

#endif
