/// Point in space. Angles in radians, right-hand rule. Any thread.
#ifndef STANDIN_GEPNT3D_H
#define STANDIN_GEPNT3D_H

#include "gevec3d.h"

class AcGePoint3d {
 public:
  /// The host's; no module has a copy of its own.
  STANDIN_OBJECTARX_API static const AcGePoint3d kOrigin;

  constexpr AcGePoint3d() = default;
  constexpr AcGePoint3d(double xIn, double yIn, double zIn) : x(xIn), y(yIn), z(zIn) {}

  constexpr AcGePoint3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
  constexpr AcGePoint3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
  constexpr AcGeVector3d operator-(const AcGePoint3d& p) const { return {x - p.x, y - p.y, z - p.z}; }
  AcGePoint3d& operator+=(const AcGeVector3d& v) { return *this = *this + v; }
  AcGePoint3d& operator-=(const AcGeVector3d& v) { return *this = *this - v; }

  /// Turns the point about the line through `about` along `axis`. An axis without length turns nothing.
  STANDIN_OBJECTARX_API AcGePoint3d& rotateBy(double angle, const AcGeVector3d& axis,
                                              const AcGePoint3d& about = kOrigin);

  double x = 0;
  double y = 0;
  double z = 0;
};

#endif
