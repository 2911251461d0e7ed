/// Vector in space. Angles in radians, right-hand rule. Any thread.
#ifndef STANDIN_GEVEC3D_H
#define STANDIN_GEVEC3D_H

#include "gegbl.h"

#include <cmath>

class AcGeVector3d {
 public:
  constexpr AcGeVector3d() = default;
  constexpr AcGeVector3d(double xIn, double yIn, double zIn) : x(xIn), y(yIn), z(zIn) {}

  constexpr AcGeVector3d operator*(double s) const { return {x * s, y * s, z * s}; }
  friend constexpr AcGeVector3d operator*(double s, const AcGeVector3d& v) { return v * s; }
  constexpr AcGeVector3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
  constexpr AcGeVector3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
  constexpr AcGeVector3d operator-() const { return {-x, -y, -z}; }
  AcGeVector3d& operator+=(const AcGeVector3d& v) { return *this = *this + v; }
  AcGeVector3d& operator-=(const AcGeVector3d& v) { return *this = *this - v; }
  AcGeVector3d& operator*=(double s) { return *this = *this * s; }

  constexpr double dotProduct(const AcGeVector3d& v) const { return x * v.x + y * v.y + z * v.z; }
  STANDIN_OBJECTARX_API AcGeVector3d crossProduct(const AcGeVector3d& v) const;

  /// Makes the length 1; a vector shorter than the tolerance is left as it is.
  STANDIN_OBJECTARX_API AcGeVector3d& normalize(const AcGeTol& tolerance = AcGeContext::gTol);

  /// v cos a + (u x v) sin a + u (u . v) (1 - cos a), u the unit axis. An axis without length turns nothing.
  STANDIN_OBJECTARX_API AcGeVector3d& rotateBy(double angle, const AcGeVector3d& axis);

  double x = 0;
  double y = 0;
  double z = 0;
};

#endif
