/// The machine's monotonic time, counted in ms from a start and run `speed` times as fast.
#ifndef STANDIN_CLOCK_REAL_TIME_H
#define STANDIN_CLOCK_REAL_TIME_H

#include <chrono>
#include <cstdint>

namespace standin::clock {

struct RealTime {
  using Moment = std::chrono::steady_clock::time_point;

  Moment start = std::chrono::steady_clock::now();
  double speed = 1.0;

  std::int64_t nowMs() const {
    const std::chrono::duration<double, std::milli> passed = std::chrono::steady_clock::now() - start;
    return static_cast<std::int64_t>(passed.count() * speed);
  }

  /// The first moment at which nowMs() returns `timeMs`: rounded up, or a wait would end a moment too soon.
  Moment at(std::int64_t timeMs) const {
    const std::chrono::duration<double, std::milli> passed(static_cast<double>(timeMs) / speed);
    return start + std::chrono::ceil<std::chrono::microseconds>(passed);
  }
};

}  // namespace standin::clock

#endif
