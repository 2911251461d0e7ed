/// The arithmetic of the cap: when it counts as released, how far one pass zooms, and how much of a rotation
/// acts about a given axis.
#ifndef COMMON_SOURCES_CAP_ARITHMETIC_H
#define COMMON_SOURCES_CAP_ARITHMETIC_H

#include "gevec3d.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>

/// One reading of the cap: its deflection and the two values that come with it.
struct CapValues {
  std::array<std::int16_t, 6> axes{};  ///< x, y, z, rx, ry, rz, as the device delivers them
  std::int32_t extra1 = 0;             ///< stored with the axes, used by nothing
  std::int32_t extra2 = 0;
};

/// True when no axis is deflected beyond `threshold`; a value equal to it counts as released.
inline bool isCapReleased(const CapValues& cap, std::int32_t threshold) {
  for (const std::int16_t value : cap.axes)
    // As an int: the magnitude of -32768 does not fit in 16 bits.
    if (std::abs(static_cast<int>(value)) > threshold) return false;
  return true;
}

/// Zoom factor of one pass for a push of `dz` (cap value / sensitivity divisor, dimensionless).
/// Never beyond 20 % either way: [0.8, 1.2]. dz = 0 gives 1.
inline double zoomFactor(double dz) {
  return dz < 0.0 ? std::max(1.0 - std::fabs(dz), 0.8) : std::min(1.0 + std::fabs(dz), 1.2);
}

/// `value` times the cosine between the unit vectors `axis` and `screenAxis`, truncated toward zero. The
/// cosine is limited to [-1, 1], and the one product that a 16-bit value cannot hold, -32768 * -1, to 32767.
inline short axisShare(short value, const AcGeVector3d& axis, const AcGeVector3d& screenAxis) {
  const double share = value * std::clamp(axis.dotProduct(screenAxis), -1.0, 1.0);
  return static_cast<short>(std::min(share, 32767.0));
}

#endif
