/// Cameras and what they show: fits, moves in the view plane, presets.
#include "camera_math.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace standin::host {
namespace {

/// Room left around what is fitted, on both sides together, as a share of it.
constexpr double kMargin = 1.05;
/// Shape of the model tile, width to height.
constexpr double kPlanAspect = 1.6;
/// Distance from which a 50 mm lens sees a field of that width on film of 36 mm.
constexpr double kDistancePerWidth = 50.0 / 36.0;
/// A direction this near to the Z axis counts as along it, in each of x and y: the limit of the
/// arbitrary-axis rule of DXF, so that a stored view and its entities agree. Exact in binary.
constexpr double kNearZ = 1.0 / 64;

double length(const AcGeVector3d& v) {
  return std::sqrt(v.dotProduct(v));
}

std::array<AcGePoint3d, 8> corners(const AcDbExtents& box) {
  const AcGePoint3d a = box.minPoint();
  const AcGePoint3d b = box.maxPoint();
  return {{{a.x, a.y, a.z},
           {b.x, a.y, a.z},
           {a.x, b.y, a.z},
           {b.x, b.y, a.z},
           {a.x, a.y, b.z},
           {b.x, a.y, b.z},
           {a.x, b.y, b.z},
           {b.x, b.y, b.z}}};
}

AcGePoint3d middle(const AcDbExtents& box) {
  return box.minPoint() + (box.maxPoint() - box.minPoint()) * 0.5;
}

/// The box seen from the camera: largest distance of a corner from `centre` in each direction of the frame.
AcGeVector3d halfSize(const ViewFrame& frame, const AcDbExtents& box, const AcGePoint3d& centre) {
  AcGeVector3d half;
  for (const AcGePoint3d& corner : corners(box)) {
    const AcGeVector3d arm = corner - centre;
    half.x = std::max(half.x, std::abs(arm.dotProduct(frame.right)));
    half.y = std::max(half.y, std::abs(arm.dotProduct(frame.up)));
    half.z = std::max(half.z, std::abs(arm.dotProduct(frame.out)));
  }
  return half;
}

Camera fittedParallel(Camera camera, const AcGeVector3d& half) {
  // The larger of the two: the whole box must fit in both directions.
  const double factor = kMargin * std::max(2 * half.x / camera.fieldWidth, 2 * half.y / camera.fieldHeight);
  if (factor <= 0) return camera;  // a single point has no size to fit
  camera.fieldWidth *= factor;
  camera.fieldHeight *= factor;
  return camera;
}

/// The field grows in proportion to the distance d from the camera: it is d / distance times as large there.
/// Each corner must be inside it.
Camera fittedPerspective(Camera camera, const ViewFrame& frame, const AcDbExtents& box) {
  const AcGeVector3d sight = camera.position - camera.target;
  const double distance = length(sight);
  double needed = 0;
  for (const AcGePoint3d& corner : corners(box)) {
    const AcGeVector3d arm = corner - camera.target;
    const double sideways = std::max(2 * std::abs(arm.dotProduct(frame.right)) / camera.fieldWidth,
                                     2 * std::abs(arm.dotProduct(frame.up)) / camera.fieldHeight);
    // A corner in front of the target needs a camera that is farther out by as much.
    needed = std::max(needed, arm.dotProduct(frame.out) + kMargin * sideways * distance);
  }
  if (needed <= 0) return camera;
  // Field and distance change by one factor, so the angle of view stays.
  const double factor = needed / distance;
  camera.position = camera.target + sight * factor;
  camera.fieldWidth *= factor;
  camera.fieldHeight *= factor;
  return camera;
}

}  // namespace

ViewFrame frameOf(const Camera& camera) {
  ViewFrame frame;
  frame.out = (camera.position - camera.target).normalize();
  // Up times out, in this order: right, up and out are a right-handed frame. `up` is computed again because
  // the camera's need not be perpendicular to the line of sight.
  frame.right = camera.up.crossProduct(frame.out).normalize();
  frame.up = frame.out.crossProduct(frame.right);
  return frame;
}

ViewFrame frameOf(const AcGeVector3d& direction, double twist) {
  ViewFrame frame;
  frame.out = AcGeVector3d(direction).normalize();
  const bool isAlongZ = std::abs(frame.out.x) < kNearZ && std::abs(frame.out.y) < kNearZ;
  const AcGeVector3d reference = isAlongZ ? AcGeVector3d(0, 1, 0) : AcGeVector3d(0, 0, 1);
  frame.right = reference.crossProduct(frame.out).normalize();
  frame.up = frame.out.crossProduct(frame.right);
  // A rotation by 0 would still round, and most views are not twisted.
  if (twist == 0) return frame;
  // The twist turns the picture counter-clockwise, so the frame turns the other way.
  frame.right.rotateBy(-twist, frame.out);
  frame.up.rotateBy(-twist, frame.out);
  return frame;
}

PaperView shownBy(const Camera& camera) {
  const ViewFrame frame = frameOf(camera);
  const AcGeVector3d target = camera.target - AcGePoint3d::kOrigin;
  return {target.dotProduct(frame.right), target.dotProduct(frame.up), camera.fieldWidth, camera.fieldHeight};
}

Camera withShown(const Camera& camera, const PaperView& shown) {
  const ViewFrame frame = frameOf(camera);
  const PaperView now = shownBy(camera);
  const AcGeVector3d shift =
      frame.right * (shown.centerX - now.centerX) + frame.up * (shown.centerY - now.centerY);
  // Position and target together: the direction of view must not change.
  Camera result = camera;
  result.position += shift;
  result.target += shift;
  if (shown.height != camera.fieldHeight) {
    // The width follows the height, because the viewport keeps its shape; `shown.width` is not used.
    result.fieldWidth = camera.fieldWidth * (shown.height / camera.fieldHeight);
    result.fieldHeight = shown.height;
  }
  return result;
}

Camera fitted(const Camera& camera, const AcDbExtents& box) {
  const ViewFrame frame = frameOf(camera);
  const AcGeVector3d way = middle(box) - camera.target;
  // Only in the view plane: the depth of the target is what the view turns about.
  const AcGeVector3d shift = frame.right * way.dotProduct(frame.right) + frame.up * way.dotProduct(frame.up);
  Camera result = camera;
  result.position += shift;
  result.target += shift;
  if (camera.isPerspective) return fittedPerspective(result, frame, box);
  return fittedParallel(result, halfSize(frame, box, result.target));
}

Camera withProjection(const Camera& camera, bool isPerspective) {
  Camera result = camera;
  result.isPerspective = isPerspective;
  // Back to parallel nothing moves: the camera's distance does not change what a parallel view shows.
  if (isPerspective && !camera.isPerspective)
    result.position = camera.target + frameOf(camera).out * (kDistancePerWidth * camera.fieldWidth);
  return result;
}

Camera cameraOf(const Drawing::View& view) {
  const ViewFrame frame = frameOf(view.direction, view.twist);
  Camera camera;
  // The stored centre is in the view's own plane, measured from the target.
  camera.target = view.target + frame.right * view.centerX + frame.up * view.centerY;
  camera.position = camera.target + view.direction;
  camera.up = frame.up;
  camera.fieldHeight = view.height;
  camera.fieldWidth = view.height * view.aspect;
  camera.isPerspective = view.isPerspective;
  return camera;
}

Camera planView(const AcDbExtents& box) {
  Camera camera;
  camera.target = middle(box);
  camera.position = camera.target + AcGeVector3d(0, 0, 1);
  // With the height of 1 this is the shape alone: the fit scales both.
  camera.fieldWidth = kPlanAspect;
  camera = fitted(camera, box);
  // After the fit, when the width is known.
  camera.position = camera.target + AcGeVector3d(0, 0, kDistancePerWidth * camera.fieldWidth);
  return camera;
}

Camera presetView(const Camera& camera, const ViewFrame& frame, const AcDbExtents& box) {
  Camera result = camera;
  result.target = middle(box);
  result.position = result.target + frame.out * length(camera.position - camera.target);
  result.up = frame.up;
  return fitted(result, box);
}

}  // namespace standin::host
