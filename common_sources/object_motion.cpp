#include "common_sources/object_motion.h"

namespace {

constexpr double kMoveUnits = 0.5;        // drawing units per unit of the cap and pass
constexpr double kSheetMoveUnits = 5e-5;  // the same on a sheet
constexpr double kTurnUnits = 0.002;      // radians per unit of the cap and pass
const AcGeVector3d kWorldY(0, 1, 0);

}  // namespace

AcGeMatrix3d objectMotion(const std::array<double, 6>& cap, const ScreenAxes& axes, const AcGePoint3d& centre,
                          bool isHover, bool isKeepHorizon) {
  const auto [x, y, z, rx, ry, rz] = cap;
  // -x, because the x axis points to the left: the objects follow the cap.
  AcGeVector3d step = (axes[0] * -x + axes[1] * y + axes[2] * z) * kMoveUnits;
  // World Y on purpose, although a hovering view keeps world Z: objects slide in the plane of x and z.
  if (isHover) step.y = 0.0;
  AcGeMatrix3d motion;
  motion.setTranslation(step);
  // Signs opposite to the view's, where the camera turns and not the scene. With a level horizon objects turn
  // about world Y, the view about world Z. Applied to a point, the last factor acts first.
  if (rx != 0.0) motion = motion * AcGeMatrix3d::rotation(rx * -kTurnUnits, axes[0], centre);
  if (ry != 0.0)
    motion = motion * AcGeMatrix3d::rotation(ry * kTurnUnits, isKeepHorizon ? kWorldY : axes[1], centre);
  if (rz != 0.0 && !isKeepHorizon) motion = motion * AcGeMatrix3d::rotation(rz * kTurnUnits, axes[2], centre);
  return motion;
}

AcGeMatrix3d sheetMotion(double x, double y) {
  AcGeMatrix3d motion;
  // Not negated, unlike a pan: here the objects move and not the view.
  motion.setTranslation(AcGeVector3d(x * kSheetMoveUnits, y * kSheetMoveUnits, 0.0));
  return motion;
}
