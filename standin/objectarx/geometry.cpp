// The part of the host's geometry that modules import. It needs nothing else of the host.
#include "gegbl.h"
#include "gemat3d.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gevec3d.h"

#include <cmath>

AcGeTol AcGeContext::gTol;
const AcGePoint3d AcGePoint3d::kOrigin{0, 0, 0};
const AcGePoint2d AcGePoint2d::kOrigin{0, 0};

AcGeVector3d AcGeVector3d::crossProduct(const AcGeVector3d& v) const {
  return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
}

AcGeVector3d& AcGeVector3d::normalize(const AcGeTol& tolerance) {
  const double length = std::sqrt(dotProduct(*this));
  // A zero vector has no direction: it stays as it is instead of becoming NaN.
  if (length < tolerance.equalVector()) return *this;
  return *this = {x / length, y / length, z / length};
}

AcGeVector3d& AcGeVector3d::rotateBy(double angle, const AcGeVector3d& axis) {
  const double length = std::sqrt(axis.dotProduct(axis));
  if (length < AcGeContext::gTol.equalVector()) return *this;
  const AcGeVector3d unit{axis.x / length, axis.y / length, axis.z / length};
  const double cosine = std::cos(angle);
  const double sine = std::sin(angle);
  // Rodrigues' formula: counter-clockwise about the axis, seen from its tip.
  return *this = *this * cosine + unit.crossProduct(*this) * sine +
                 unit * (unit.dotProduct(*this) * (1 - cosine));
}

AcGePoint3d& AcGePoint3d::rotateBy(double angle, const AcGeVector3d& axis, const AcGePoint3d& about) {
  AcGeVector3d arm = *this - about;
  return *this = about + arm.rotateBy(angle, axis);
}

AcGeMatrix3d::AcGeMatrix3d() : entry{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}} {}

/// Only the last column: the rest of the matrix stays, which rotation() relies on. Matrices act on columns.
AcGeMatrix3d& AcGeMatrix3d::setTranslation(const AcGeVector3d& by) {
  entry[0][3] = by.x;
  entry[1][3] = by.y;
  entry[2][3] = by.z;
  return *this;
}

AcGeMatrix3d AcGeMatrix3d::operator*(const AcGeMatrix3d& right) const {
  AcGeMatrix3d result;
  for (int row = 0; row < 4; ++row)
    for (int column = 0; column < 4; ++column)
      result.entry[row][column] =
          entry[row][0] * right.entry[0][column] + entry[row][1] * right.entry[1][column] +
          entry[row][2] * right.entry[2][column] + entry[row][3] * right.entry[3][column];
  return result;
}

AcGeMatrix3d AcGeMatrix3d::rotation(double angle, const AcGeVector3d& axis, const AcGePoint3d& centre) {
  AcGeMatrix3d result;
  const double length = std::sqrt(axis.dotProduct(axis));
  if (length < AcGeContext::gTol.equalVector()) return result;
  const double u[3] = {axis.x / length, axis.y / length, axis.z / length};
  const double cosine = std::cos(angle);
  const double sine = std::sin(angle);
  // The matrix of the cross product with `u`; its signs make a positive angle counter-clockwise.
  const double cross[3][3] = {{0, -u[2], u[1]}, {u[2], 0, -u[0]}, {-u[1], u[0], 0}};
  for (int row = 0; row < 3; ++row)
    for (int column = 0; column < 3; ++column)
      result.entry[row][column] =
          (row == column ? cosine : 0.0) + cross[row][column] * sine + u[row] * u[column] * (1 - cosine);
  const AcGeVector3d arm = centre - AcGePoint3d::kOrigin;
  // The centre must map to itself: c - R c.
  return result.setTranslation(arm - result * arm);
}
