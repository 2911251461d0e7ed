/// How far and about what one pass of the cap moves the selected objects.
#ifndef COMMON_SOURCES_OBJECT_MOTION_H
#define COMMON_SOURCES_OBJECT_MOTION_H

#include "common_sources/camera.h"

#include "gemat3d.h"

#include <array>

/// Motion in space by raw cap values x, y, z, rx, ry, rz: a turn about `centre`, then a step. `isHover` keeps
/// the world's Y, `isKeepHorizon` ignores rz and turns about the world's Y for ry.
AcGeMatrix3d objectMotion(const std::array<double, 6>& cap, const ScreenAxes& axes, const AcGePoint3d& centre,
                          bool isHover, bool isKeepHorizon);

/// Motion on a sheet by raw cap values.
AcGeMatrix3d sheetMotion(double x, double y);

#endif
