/// The rotation mode as the device's advanced settings encode it, decoded.
#ifndef COMMON_SOURCES_ROTATION_MODE_H
#define COMMON_SOURCES_ROTATION_MODE_H

#include <cstdint>

/// Values of `RotationMode::rotCenterMode`; any other value behaves as kObjOrigin.
enum RotCenterMode : int { kObjScreen = 0, kObjOrigin = 1, kCamStandard = 2, kCamTarget = 3 };

/// Four bytes, so that a thread can publish all of it at once in one lock-free atomic.
struct RotationMode {
  std::int8_t rotCenterMode = kObjScreen;
  bool isKeepHorizon = false;       ///< no roll, and turning about the world Z axis
  bool isHover = false;             ///< a perspective camera keeps its elevation
  bool isZoomAllAfterView = false;  ///< zoom to the extents after a standard view
};

/// Camera modes move the camera instead of the scene: every translation and rotation is inverted.
constexpr bool isCameraMode(int rotCenterMode) {
  return rotCenterMode == kCamStandard || rotCenterMode == kCamTarget;
}

/// Decodes the three-digit decimal code of the advanced settings (hundreds: hover, tens: level horizon,
/// units: centre mode) and takes the zoom-after-view switch over. A units digit of 4 means centre mode 2 with
/// hover.
RotationMode decodeRotationMode(std::int32_t code, bool isZoomAllAfterView);

#endif
