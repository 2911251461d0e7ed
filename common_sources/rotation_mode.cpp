#include "common_sources/rotation_mode.h"

namespace {
// A code of the device only; decoded it is centre mode kCamStandard with hover.
constexpr int kCamHover = 4;
}  // namespace

RotationMode decodeRotationMode(std::int32_t code, bool isZoomAllAfterView) {
  RotationMode mode;
  const int units = code % 10;
  // >= 1 and not == 1: any other digit than 0 switches on.
  mode.isHover = code / 100 >= 1 || units == kCamHover;
  mode.isKeepHorizon = code % 100 / 10 >= 1;
  mode.rotCenterMode = static_cast<std::int8_t>(units == kCamHover ? kCamStandard : units);
  mode.isZoomAllAfterView = isZoomAllAfterView;
  return mode;
}
