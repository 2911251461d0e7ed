#include "common_sources/rotation_mode.h"

namespace {
constexpr int kCamHover = 4;
}

RotationMode decodeRotationMode(std::int32_t code, bool isZoomAllAfterView) {
  RotationMode mode;
  const int units = code % 10;
  mode.isHover = code / 100 >= 1 || units == kCamHover;
  mode.isKeepHorizon = code % 100 / 10 >= 1;
  mode.rotCenterMode = static_cast<std::int8_t>(units == kCamHover ? kCamStandard : units);
  mode.isZoomAllAfterView = isZoomAllAfterView;
  return mode;
}
