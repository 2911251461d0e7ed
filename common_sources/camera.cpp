#include "common_sources/camera.h"

#include "common_sources/rotation_mode.h"

Camera cameraOf(const AcGsView& view) {
  return {view.position(), view.target(), view.upVector(), view.fieldWidth(), view.fieldHeight()};
}

void setCamera(AcGsView& view, const Camera& camera, bool isPerspective) {
  view.setView(camera.position, camera.target, camera.up, camera.fieldWidth, camera.fieldHeight,
               isPerspective ? AcGsView::kPerspective : AcGsView::kParallel);
}

void moveCamera(Camera& camera, const AcGeVector3d& step) {
  camera.position += step;
  camera.target += step;
}

void turnCamera(Camera& camera, double angle, const AcGeVector3d& axis, const AcGePoint3d& centre) {
  camera.position.rotateBy(angle, axis, centre);
  camera.target.rotateBy(angle, axis, centre);
  camera.up.rotateBy(angle, axis);
}

AcGePoint3d rotationCentre(const AcGsView& view, int rotCenterMode, bool isPerspective) {
  // A parallel view has no place from which the user looks, so mode kCamStandard does not turn it there.
  if (rotCenterMode == kCamStandard && isPerspective) return view.position();
  if (rotCenterMode == kCamTarget || rotCenterMode == kObjScreen) return view.target();
  return AcGePoint3d::kOrigin;
}
