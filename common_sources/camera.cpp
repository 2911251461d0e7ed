#include "common_sources/camera.h"

#include "common_sources/rotation_mode.h"

#include <cmath>

namespace {

/// The rotation of the host's rotateBy. Three vectors turn alike in each pass, and the host would work out
/// sine and cosine for each of them.
struct Rotation {
  AcGeVector3d unit;  ///< the axis
  double cosine;
  double sine;

  /// v cos a + (u x v) sin a + u (u . v) (1 - cos a)
  AcGeVector3d of(const AcGeVector3d& v) const {
    const AcGeVector3d& u = unit;
    const AcGeVector3d cross{u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x};
    return v * cosine + cross * sine + u * (u.dotProduct(v) * (1 - cosine));
  }
};

}  // namespace

ScreenAxes screenAxesOf(const AcGsView& view) {
  const AcGeVector3d up = view.upVector();
  const AcGeVector3d towardsUser = view.position() - view.target();
  // z cross up, so the x axis points to the left of the screen. The signs of all motion along it follow.
  ScreenAxes axes{towardsUser.crossProduct(up), up, towardsUser};
  for (AcGeVector3d& axis : axes) axis.normalize();
  return axes;
}

void moveCamera(Camera& camera, const AcGeVector3d& step) {
  camera.position += step;
  camera.target += step;
}

void turnCamera(Camera& camera, double angle, const AcGeVector3d& axis, const AcGePoint3d& centre) {
  // As in the host's rotateBy, an axis without length turns nothing; normalize() leaves such a vector
  // unchanged.
  const double tolerance = AcGeContext::gTol.equalVector();
  if (axis.dotProduct(axis) < tolerance * tolerance) return;
  const Rotation rotation{axis, std::cos(angle), std::sin(angle)};
  camera.position = centre + rotation.of(camera.position - centre);
  camera.target = centre + rotation.of(camera.target - centre);
  // A direction: turned, but not moved with the centre.
  camera.up = rotation.of(camera.up);
}

AcGePoint3d rotationCentre(const AcGsView& view, int rotCenterMode, bool isPerspective) {
  // A parallel view has no place from which the user looks, so mode kCamStandard does not turn it there.
  if (rotCenterMode == kCamStandard && isPerspective) return view.position();
  if (rotCenterMode == kCamTarget || rotCenterMode == kObjScreen) return view.target();
  return AcGePoint3d::kOrigin;
}
