// Values next to those at which the module's pure logic changes what it does.
#include "common_sources/camera.h"
#include "common_sources/cap_arithmetic.h"
#include "common_sources/latest_value.h"
#include "common_sources/object_motion.h"
#include "common_sources/rotation_mode.h"
#include "common_sources/scroll_amount.h"

#include <gmock/gmock.h>

#include <cmath>

namespace {

using testing::Each;

TEST(CapValues, ReadingThatNeverCameIsAllZero) {
  const CapValues cap;
  EXPECT_THAT(cap.axes, Each(0));
  EXPECT_EQ(cap.extra1, 0);
  EXPECT_EQ(cap.extra2, 0);
}

TEST(AxisShare, CosineIsLimitedForAnAxisThatIsTooLong) {
  EXPECT_EQ(axisShare(1000, {3, 0, 0}, {1, 0, 0}), 1000);
  EXPECT_EQ(axisShare(1000, {3, 0, 0}, {-1, 0, 0}), -1000);
}

TEST(Camera, AxisOfAlmostUnitLengthTurns) {
  Camera camera{{1, 0, 0}, {0, 0, 0}, {0, 0, 1}, 4, 3};
  turnCamera(camera, std::acos(0.0), {0, 0, 1 - 1e-9}, {0, 0, 0});
  EXPECT_NEAR(camera.position.y, 1, 1e-8);
}

TEST(ObjectMotion, SmallestDeflectionTurnsAboutEachAxis) {
  const ScreenAxes axes{AcGeVector3d(1, 0, 0), AcGeVector3d(0, 1, 0), AcGeVector3d(0, 0, 1)};
  const AcGePoint3d centre(0, 0, 0), point(1, 2, 4);
  const double angle = 0.002;
  for (const auto& [cap, axis, sign] : {std::tuple{std::array{0., 0., 0., 1., 0., 0.}, axes[0], -1},
                                        {{0, 0, 0, 0, 1, 0}, axes[1], 1},
                                        {{0, 0, 0, 0, 0, 1}, axes[2], 1}}) {
    const AcGePoint3d turned = objectMotion(cap, axes, centre, false, false) * point;
    const AcGePoint3d expected = AcGeMatrix3d::rotation(sign * angle, axis, centre) * point;
    EXPECT_NEAR(turned.x, expected.x, 1e-12);
    EXPECT_NEAR(turned.y, expected.y, 1e-12);
    EXPECT_NEAR(turned.z, expected.z, 1e-12);
  }
}

TEST(RotationMode, NineIsADigitOfItsOwnPlace) {
  const RotationMode units = decodeRotationMode(9, false);
  EXPECT_FALSE(units.isKeepHorizon);
  EXPECT_FALSE(units.isHover);
  EXPECT_EQ(units.rotCenterMode, 9);
  const RotationMode tens = decodeRotationMode(99, false);
  EXPECT_TRUE(tens.isKeepHorizon);
  EXPECT_FALSE(tens.isHover);
}

TEST(RotationMode, ModeIsPlainUntilTheDeviceHasReportedIt) {
  const RotationMode mode;
  EXPECT_EQ(mode.rotCenterMode, kObjScreen);
  EXPECT_FALSE(mode.isKeepHorizon);
  EXPECT_FALSE(mode.isHover);
  EXPECT_FALSE(mode.isZoomAllAfterView);
}

TEST(ScrollRange, FirstLineIsScrolledBackToTheStartAndNoFurther) {
  ScrollRange range{};
  range.maximum = 100;
  range.page = 10;
  range.position = 1;
  EXPECT_TRUE(isScrollable(range, -1));
  range.position = 0;
  EXPECT_FALSE(isScrollable(range, -1));
  EXPECT_TRUE(isScrollable(range, 0)) << "no amount counts as forwards";
}

TEST(LatestValue, ValueThatTheReaderHoldsIsNotOverwritten) {
  LatestValue<int> value;
  const int& before = value.load();
  value.store(1);
  value.store(2);
  EXPECT_EQ(before, 0);
  const int& loaded = value.load();
  EXPECT_EQ(loaded, 2);
  value.store(3);
  value.store(4);
  value.store(5);
  EXPECT_EQ(loaded, 2);
  EXPECT_EQ(value.load(), 5);
}

}  // namespace
