/// Ellipses, circles and arcs in space by one parametric form.
#include "conic.h"

#include <algorithm>
#include <cmath>

namespace standin {
namespace {

constexpr int kChordsPerTurn = 64;
/// Parameters that differ by less name the same place of the curve.
constexpr double kSameParameter = 1e-9;

/// Whether t, or t some turns on, is between start and end.
bool isBetween(double t, double start, double end) {
  const double turns = std::floor((t - start) / kTwoPi);
  return t - turns * kTwoPi <= end;
}

}  // namespace

AcGePoint3d Conic::at(double t) const {
  return centre + u * std::cos(t) + v * std::sin(t);
}

Polyline3 Conic::chords() const {
  const double sweep = end - start;
  // The tolerance keeps a full turn at 64 chords when rounding makes its sweep a little larger.
  const int count =
      std::max(1, static_cast<int>(std::ceil(sweep / kTwoPi * kChordsPerTurn - kSameParameter)));
  Polyline3 result;
  result.reserve(static_cast<std::size_t>(count) + 1);
  for (int i = 0; i <= count; ++i) result.push_back(at(start + sweep * i / count));
  return result;
}

void Conic::addTo(AcDbExtents& extents) const {
  // The ends, and the extremes of x, y and z that the arc passes: exact, unlike a box of the chords.
  extents.addPoint(at(start));
  extents.addPoint(at(end));
  // A coordinate c + a cos t + b sin t is furthest out at t = atan2(b, a) and half a turn from there.
  for (const double t : {std::atan2(v.x, u.x), std::atan2(v.y, u.y), std::atan2(v.z, u.z)})
    for (const double furthest : {t, t + kTwoPi / 2})
      if (isBetween(furthest, start, end)) extents.addPoint(at(furthest));
}

void Conic::transformBy(const AcGeMatrix3d& by) {
  // A point takes the translation, the two vectors do not.
  centre = by * centre;
  u = by * u;
  v = by * v;
}

Conic makeConic(const AcGePoint3d& centre, const AcGeVector3d& u, const AcGeVector3d& v, double start,
                double end) {
  const double turns = std::floor((end - start) / kTwoPi);
  double sweep = end - start - turns * kTwoPi;
  // Equal ends are a full turn, not an empty arc; the tolerance catches 0 and 2 pi after rounding.
  if (sweep < kSameParameter) sweep += kTwoPi;
  return {centre, u, v, start, start + sweep};
}

Conic bulgedSegment(const AcGePoint3d& from, const AcGePoint3d& to, double bulge,
                    const AcGeVector3d& normal) {
  const AcGeVector3d chord = to - from;
  // The centre is on the chord's bisector, to the left of the chord for a bulge between 0 and 1. `left` is as
  // long as the chord, so the distance needs no square root. A negative bulge puts the centre to the right.
  const AcGeVector3d left = normal.crossProduct(chord);
  const AcGePoint3d centre = from + chord * 0.5 + left * ((1 - bulge * bulge) / (4 * bulge));
  const AcGeVector3d u = from - centre;
  // The sign makes the arc run clockwise for a negative bulge.
  const AcGeVector3d v = normal.crossProduct(u) * (bulge > 0 ? 1.0 : -1.0);
  // A bulge is the tangent of a quarter of the arc's angle.
  return {centre, u, v, 0, 4 * std::atan(std::abs(bulge))};
}

}  // namespace standin
