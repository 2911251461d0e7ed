/// What a viewport shows, as plain values. Lengths in drawing units unless said otherwise.
#ifndef STANDIN_CAMERA_H
#define STANDIN_CAMERA_H

// clang-format off
#include "gepnt3d.h"
#include "gevec3d.h"
// clang-format on

namespace standin::host {

/// A view's camera, in the world frame; `up` as it was given, not made perpendicular to the line of sight.
struct Camera {
  AcGePoint3d position{0, 0, 1};
  AcGePoint3d target{0, 0, 0};
  AcGeVector3d up{0, 1, 0};
  double fieldWidth = 1;
  double fieldHeight = 1;
  bool isPerspective = false;
};

/// What a paper-space viewport or a model tile's table record shows: centre and visible size.
struct PaperView {
  double centerX = 0;
  double centerY = 0;
  double width = 1;
  double height = 1;
};

}  // namespace standin::host

#endif
