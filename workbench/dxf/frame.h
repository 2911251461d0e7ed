/// The object frame of planar DXF entities: their coordinates are given in a frame whose z axis is the
/// extrusion direction and whose x axis follows from it by the arbitrary-axis rule. Any thread.
#ifndef WORKBENCH_DXF_FRAME_H
#define WORKBENCH_DXF_FRAME_H

// clang-format off
#include "gepnt3d.h"
#include "gevec3d.h"
#include "gemat3d.h"
// clang-format on

namespace workbench {

struct DxfFrame {
  AcGeVector3d x{1, 0, 0};
  AcGeVector3d y{0, 1, 0};
  AcGeVector3d z{0, 0, 1};

  AcGePoint3d toWorld(const AcGePoint3d& p) const {
    return AcGePoint3d::kOrigin + x * p.x + y * p.y + z * p.z;
  }
  AcGeMatrix3d matrix() const;  ///< from the frame to the world
};

/// Frame of the extrusion direction `normal` (unit): x = worldY x normal when the normal is within 1/64 of
/// the world's z axis in both x and y, else worldZ x normal; y = normal x x.
DxfFrame dxfFrame(const AcGeVector3d& normal);

/// Scales along the axes.
AcGeMatrix3d scaling(double x, double y, double z);

double radians(double degrees);

}  // namespace workbench

#endif
