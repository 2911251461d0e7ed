#include "common_sources/rotation_mode.h"

#include <gtest/gtest.h>

#include <atomic>

namespace {

struct Case {
  std::int32_t code;
  int centreMode;
  bool isKeepHorizon;
  bool isHover;
};

class DecodeRotationMode : public ::testing::TestWithParam<Case> {};

TEST_P(DecodeRotationMode, DecodingSplitsTheDigits) {
  const RotationMode mode = decodeRotationMode(GetParam().code, false);
  EXPECT_EQ(mode.rotCenterMode, GetParam().centreMode);
  EXPECT_EQ(mode.isKeepHorizon, GetParam().isKeepHorizon);
  EXPECT_EQ(mode.isHover, GetParam().isHover);
  EXPECT_FALSE(mode.isZoomAllAfterView);
}

INSTANTIATE_TEST_SUITE_P(Codes, DecodeRotationMode,
                         ::testing::Values(Case{0, 0, false, false}, Case{1, 1, false, false},
                                           Case{2, 2, false, false}, Case{3, 3, false, false},
                                           Case{4, 2, false, true}, Case{104, 2, false, true},
                                           Case{110, 0, true, true}, Case{10, 0, true, false},
                                           Case{14, 2, true, true}, Case{93, 3, true, false},
                                           Case{900, 0, false, true}, Case{999, 9, true, true}),
                         [](const auto& test) { return std::to_string(test.param.code); });

TEST(RotationMode, ZoomAfterViewIsTakenOver) {
  EXPECT_TRUE(decodeRotationMode(0, true).isZoomAllAfterView);
}

TEST(RotationMode, ModeIsPublishedWithoutALock) {
  EXPECT_TRUE(std::atomic<RotationMode>::is_always_lock_free);
}

TEST(RotationMode, CameraModesAreTwoAndThree) {
  EXPECT_FALSE(isCameraMode(kObjScreen));
  EXPECT_FALSE(isCameraMode(kObjOrigin));
  EXPECT_TRUE(isCameraMode(kCamStandard));
  EXPECT_TRUE(isCameraMode(kCamTarget));
}

}  // namespace
