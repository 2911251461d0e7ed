#include "common_sources/rotation_mode.h"

namespace {
constexpr int kCamHover = 4;
}

RotationMode decodeRotationMode(std::int32_t code, bool isZoomAllAfterView) {
  RotationMode mode;
  const int units = code % 10;
  mode.mIsHover = code / 100 >= 1 || units == kCamHover;
  mode.mIsKeepHorizon = code % 100 / 10 >= 1;
  mode.mRotCenterMode = static_cast<std::int8_t>(units == kCamHover ? kCamStandard : units);
  mode.mIsZoomAllAfterView = isZoomAllAfterView;
  return mode;
}
