/// The share of a cap rotation that acts about an axis taken from the drawing.
#ifndef COMMON_SOURCES_AXIS_SHARE_H
#define COMMON_SOURCES_AXIS_SHARE_H

#include "gevec3d.h"

#include <algorithm>

/// `value` times the cosine between the unit vectors `axis` and `screenAxis`, truncated toward zero. The
/// cosine is limited to [-1, 1], and the one product that a 16-bit value cannot hold, -32768 * -1, to 32767.
inline short axisShare(short value, const AcGeVector3d& axis, const AcGeVector3d& screenAxis) {
  const double share = value * std::clamp(axis.dotProduct(screenAxis), -1.0, 1.0);
  return static_cast<short>(std::min(share, 32767.0));
}

#endif
