/// Affine map of space, applied to columns: entry[row][column], translation in column 3. Angles in radians,
/// right-hand rule. Any thread.
#ifndef STANDIN_GEMAT3D_H
#define STANDIN_GEMAT3D_H

#include "gepnt3d.h"
#include "gevec3d.h"

#include <cmath>

class AcGeMatrix3d {
 public:
  AcGeMatrix3d() = default;

  /// Replaces the translation part.
  AcGeMatrix3d& setTranslation(const AcGeVector3d& by) {
    entry[0][3] = by.x;
    entry[1][3] = by.y;
    entry[2][3] = by.z;
    return *this;
  }

  /// Turns about the line through `centre` along `axis`. An axis without length gives the identity.
  static AcGeMatrix3d rotation(double angle, const AcGeVector3d& axis,
                               const AcGePoint3d& centre = AcGePoint3d::kOrigin);

  /// The map that applies `right` first.
  AcGeMatrix3d operator*(const AcGeMatrix3d& right) const {
    AcGeMatrix3d result;
    for (int row = 0; row < 4; ++row)
      for (int column = 0; column < 4; ++column)
        result.entry[row][column] =
            entry[row][0] * right.entry[0][column] + entry[row][1] * right.entry[1][column] +
            entry[row][2] * right.entry[2][column] + entry[row][3] * right.entry[3][column];
    return result;
  }

  friend AcGePoint3d operator*(const AcGeMatrix3d& m, const AcGePoint3d& p) {
    return {m.entry[0][0] * p.x + m.entry[0][1] * p.y + m.entry[0][2] * p.z + m.entry[0][3],
            m.entry[1][0] * p.x + m.entry[1][1] * p.y + m.entry[1][2] * p.z + m.entry[1][3],
            m.entry[2][0] * p.x + m.entry[2][1] * p.y + m.entry[2][2] * p.z + m.entry[2][3]};
  }
  /// The linear part alone.
  friend AcGeVector3d operator*(const AcGeMatrix3d& m, const AcGeVector3d& v) {
    return {m.entry[0][0] * v.x + m.entry[0][1] * v.y + m.entry[0][2] * v.z,
            m.entry[1][0] * v.x + m.entry[1][1] * v.y + m.entry[1][2] * v.z,
            m.entry[2][0] * v.x + m.entry[2][1] * v.y + m.entry[2][2] * v.z};
  }

  double entry[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
};

inline AcGeMatrix3d AcGeMatrix3d::rotation(double angle, const AcGeVector3d& axis,
                                           const AcGePoint3d& centre) {
  AcGeMatrix3d result;
  const double length = std::sqrt(axis.dotProduct(axis));
  if (length < AcGeContext::gTol.equalVector()) return result;
  const double u[3] = {axis.x / length, axis.y / length, axis.z / length};
  const double cosine = std::cos(angle);
  const double sine = std::sin(angle);
  const double cross[3][3] = {{0, -u[2], u[1]}, {u[2], 0, -u[0]}, {-u[1], u[0], 0}};
  for (int row = 0; row < 3; ++row)
    for (int column = 0; column < 3; ++column)
      result.entry[row][column] =
          (row == column ? cosine : 0.0) + cross[row][column] * sine + u[row] * u[column] * (1 - cosine);
  const AcGeVector3d arm = centre - AcGePoint3d::kOrigin;
  return result.setTranslation(arm - result * arm);
}

#endif
