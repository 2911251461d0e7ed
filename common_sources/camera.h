/// The camera of a graphics view: read, moved, turned and put back. Main thread; throws what the host throws.
#ifndef COMMON_SOURCES_CAMERA_H
#define COMMON_SOURCES_CAMERA_H

// clang-format off
#include "gs.h"
#include "gepnt3d.h"
#include "gevec3d.h"
// clang-format on

#include <array>

/// World coordinates, drawing units.
struct Camera {
  AcGePoint3d position;
  AcGePoint3d target;
  AcGeVector3d up;
  double fieldWidth;
  double fieldHeight;
};

inline Camera cameraOf(const AcGsView& view) {
  return {view.position(), view.target(), view.upVector(), view.fieldWidth(), view.fieldHeight()};
}

/// The screen's x, y, z in world coordinates, unit vectors.
using ScreenAxes = std::array<AcGeVector3d, 3>;

/// z from the target to the camera, y the up vector, x = z cross up.
ScreenAxes screenAxesOf(const AcGsView& view);

/// Gives the view this camera and the projection that the caller has read.
inline void setCamera(AcGsView& view, const Camera& camera, bool isPerspective) {
  view.setView(camera.position, camera.target, camera.up, camera.fieldWidth, camera.fieldHeight,
               isPerspective ? AcGsView::kPerspective : AcGsView::kParallel);
}

/// Moves position and target alike, so that the direction of view stays.
void moveCamera(Camera& camera, const AcGeVector3d& step);

/// Turns the camera by `angle` (radians, right-handed) about the line through `centre` along `axis`, a unit
/// vector.
void turnCamera(Camera& camera, double angle, const AcGeVector3d& axis, const AcGePoint3d& centre);

/// What a rotation turns about when the selection gives no centre: the camera, the target or the world's
/// origin, by centre mode.
AcGePoint3d rotationCentre(const AcGsView& view, int rotCenterMode, bool isPerspective);

#endif
