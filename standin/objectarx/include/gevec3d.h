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
  constexpr AcGeVector3d crossProduct(const AcGeVector3d& v) const {
    return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
  }

  /// Makes the length 1; a vector shorter than the tolerance is left as it is.
  AcGeVector3d& normalize(const AcGeTol& tolerance = AcGeContext::gTol) {
    const double length = std::sqrt(dotProduct(*this));
    if (length < tolerance.equalVector()) return *this;
    return *this = {x / length, y / length, z / length};
  }

  /// v cos a + (u x v) sin a + u (u . v) (1 - cos a), u the unit axis. An axis without length turns nothing.
  AcGeVector3d& rotateBy(double angle, const AcGeVector3d& axis) {
    const double length = std::sqrt(axis.dotProduct(axis));
    if (length < AcGeContext::gTol.equalVector()) return *this;
    const AcGeVector3d unit{axis.x / length, axis.y / length, axis.z / length};
    const double cosine = std::cos(angle);
    const double sine = std::sin(angle);
    return *this = *this * cosine + unit.crossProduct(*this) * sine +
                   unit * (unit.dotProduct(*this) * (1 - cosine));
  }

  double x = 0;
  double y = 0;
  double z = 0;
};

#endif
