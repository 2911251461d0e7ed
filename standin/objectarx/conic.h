/// A part of an ellipse in space: centre + u cos t + v sin t, t from `start` to `end` (radians, start <=
/// end). Any affine map of one is one, so circles and arcs are kept this way too. Any thread.
#ifndef STANDIN_CONIC_H
#define STANDIN_CONIC_H

#include "drawing.h"

namespace standin {

constexpr double kTwoPi = 6.283185307179586476925286766559;

struct Conic {
  AcGePoint3d centre;
  AcGeVector3d u;
  AcGeVector3d v;
  double start = 0;
  double end = kTwoPi;

  AcGePoint3d at(double t) const;
  /// Chords, 64 to a full turn, both ends included.
  Polyline3 chords() const;
  void addTo(AcDbExtents& extents) const;
  void transformBy(const AcGeMatrix3d& by);
};

/// `end` at or below `start` means a turn further on.
Conic makeConic(const AcGePoint3d& centre, const AcGeVector3d& u, const AcGeVector3d& v, double start,
                double end);

/// The arc from `from` to `to` that turns about `normal` by four times the arctangent of `bulge` (not 0).
Conic bulgedSegment(const AcGePoint3d& from, const AcGePoint3d& to, double bulge, const AcGeVector3d& normal);

}  // namespace standin

#endif
