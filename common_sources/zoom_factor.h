/// How far one pass zooms.
#ifndef COMMON_SOURCES_ZOOM_FACTOR_H
#define COMMON_SOURCES_ZOOM_FACTOR_H

#include <algorithm>
#include <cmath>

/// Zoom factor of one pass for a push of `dz` (cap value / sensitivity divisor, dimensionless).
/// Never beyond 20 % either way: [0.8, 1.2]. dz = 0 gives 1.
inline double zoomFactor(double dz) {
  return dz < 0.0 ? std::max(1.0 - std::fabs(dz), 0.8) : std::min(1.0 + std::fabs(dz), 1.2);
}

#endif
