/// One reading of the cap: its deflection and the two values that come with it.
#ifndef COMMON_SOURCES_CAP_VALUES_H
#define COMMON_SOURCES_CAP_VALUES_H

#include <array>
#include <cstdint>
#include <cstdlib>

struct CapValues {
  std::array<std::int16_t, 6> mAxes{};  ///< x, y, z, rx, ry, rz, as the device delivers them
  std::int32_t mCapExtra1 = 0;          ///< stored with the axes, used by nothing
  std::int32_t mCapExtra2 = 0;
};

/// True when no axis is deflected beyond `threshold`; a value equal to it counts as released.
inline bool isCapReleased(const CapValues& cap, std::int32_t threshold) {
  for (const std::int16_t value : cap.mAxes)
    if (std::abs(static_cast<int>(value)) > threshold) return false;
  return true;
}

#endif
