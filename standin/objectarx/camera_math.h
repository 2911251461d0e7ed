/// Arithmetic on cameras. Lengths in drawing units, angles in radians, world frame. Any thread.
#ifndef STANDIN_CAMERA_MATH_H
#define STANDIN_CAMERA_MATH_H

#include "camera.h"
#include "drawing.h"

#include "dbmain.h"

namespace standin::host {

/// Unit vectors of a view: to the right and up on the screen, and out of it toward the camera.
struct ViewFrame {
  AcGeVector3d right{1, 0, 0};
  AcGeVector3d up{0, 1, 0};
  AcGeVector3d out{0, 0, 1};
};

/// `up` is made perpendicular to the line of sight here, not in the camera.
ViewFrame frameOf(const Camera& camera);

/// Frame of a view along `direction` (from the target to the camera, not 0) turned by `twist`: the world's Z
/// axis points up, or Y when the direction is along Z.
ViewFrame frameOf(const AcGeVector3d& direction, double twist);

/// What the camera shows in its own plane: the centre is the target's place along the frame's right and up.
PaperView shownBy(const Camera& camera);
/// The camera moved in its own plane, and its field scaled to the height, so that it shows `shown`.
Camera withShown(const Camera& camera, const PaperView& shown);

/// The camera moved, along its direction, so that the box fills the field but for the margin: a parallel one
/// moves in its plane and scales its field, a perspective one keeps its angle and goes as far back as it
/// must.
Camera fitted(const Camera& camera, const AcDbExtents& box);

/// With the projection changed. On the way to perspective the camera moves to where a 50 mm lens sees the
/// field.
Camera withProjection(const Camera& camera, bool isPerspective);

/// The stored view as a camera.
Camera cameraOf(const Drawing::View& view);
/// A parallel view from above that shows the whole box in a field of 1.6 to 1.
Camera planView(const AcDbExtents& box);
/// As `camera`, but looking from `frame.out` onto the middle of the box, and showing all of it.
Camera presetView(const Camera& camera, const ViewFrame& frame, const AcDbExtents& box);

}  // namespace standin::host

#endif
