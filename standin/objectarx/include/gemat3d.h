/// Affine map of space, applied to columns: entry[row][column], translation in column 3. Angles in radians,
/// right-hand rule. Any thread.
#ifndef STANDIN_GEMAT3D_H
#define STANDIN_GEMAT3D_H

#include "gepnt3d.h"
#include "gevec3d.h"

#include <cmath>

class AcGeMatrix3d {
 public:
  /// The identity.
  STANDIN_OBJECTARX_API AcGeMatrix3d();

  /// Replaces the translation part.
  STANDIN_OBJECTARX_API AcGeMatrix3d& setTranslation(const AcGeVector3d& by);

  /// Turns about the line through `centre` along `axis`. An axis without length gives the identity.
  STANDIN_OBJECTARX_API static AcGeMatrix3d rotation(double angle, const AcGeVector3d& axis,
                                                     const AcGePoint3d& centre = AcGePoint3d::kOrigin);

  /// The map that applies `right` first.
  STANDIN_OBJECTARX_API AcGeMatrix3d operator*(const AcGeMatrix3d& right) const;

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

  double entry[4][4];
};

#endif
