#include "common_sources/cap_arithmetic.h"

#include <gtest/gtest.h>

namespace {

TEST(CapValues, ValuesEqualToTheThresholdCountAsReleased) {
  EXPECT_TRUE(isCapReleased({{5, -5, 5, -5, 5, -5}, 0, 0}, 5));
}

TEST(CapValues, OneAxisBeyondTheThresholdIsADeflection) {
  for (std::size_t axis = 0; axis < 6; ++axis) {
    CapValues cap;
    cap.axes[axis] = 6;
    EXPECT_FALSE(isCapReleased(cap, 5)) << "axis " << axis;
    cap.axes[axis] = -6;
    EXPECT_FALSE(isCapReleased(cap, 5)) << "axis " << axis;
  }
}

TEST(CapValues, SmallestValueExceedsEveryPositiveThreshold) {
  EXPECT_FALSE(isCapReleased({{-32768, 0, 0, 0, 0, 0}, 0, 0}, 32767));
  EXPECT_TRUE(isCapReleased({{-32768, 0, 0, 0, 0, 0}, 0, 0}, 32768));
}

TEST(CapValues, ZeroIsReleasedAtThresholdZeroButNotBelow) {
  EXPECT_TRUE(isCapReleased({}, 0));
  EXPECT_FALSE(isCapReleased({}, -1));
}

TEST(ZoomFactor, NoPushKeepsTheSize) {
  EXPECT_EQ(zoomFactor(0.0), 1.0);
}

TEST(ZoomFactor, PushGrowsTheFactor) {
  EXPECT_DOUBLE_EQ(zoomFactor(0.1), 1.1);
}

TEST(ZoomFactor, PullShrinksTheFactor) {
  EXPECT_DOUBLE_EQ(zoomFactor(-0.1), 0.9);
}

TEST(ZoomFactor, StrongPushZoomsByTwentyPercent) {
  EXPECT_EQ(zoomFactor(0.5), 1.2);
  EXPECT_EQ(zoomFactor(1e300), 1.2);
}

TEST(ZoomFactor, StrongPullZoomsByTwentyPercent) {
  EXPECT_EQ(zoomFactor(-0.5), 0.8);
  EXPECT_EQ(zoomFactor(-1e300), 0.8);
}

const AcGeVector3d kX(1, 0, 0);

TEST(AxisShare, AlignedAxisKeepsTheValue) {
  EXPECT_EQ(axisShare(300, kX, kX), 300);
}

TEST(AxisShare, OppositeAxisInvertsTheValue) {
  EXPECT_EQ(axisShare(300, kX, AcGeVector3d(-1, 0, 0)), -300);
}

TEST(AxisShare, PerpendicularAxisContributesNothing) {
  EXPECT_EQ(axisShare(32767, kX, AcGeVector3d(0, 1, 0)), 0);
}

TEST(AxisShare, ShareIsTruncatedTowardZero) {
  const AcGeVector3d tilted(0.6, 0.8, 0);
  EXPECT_EQ(axisShare(9, kX, tilted), 5);
  EXPECT_EQ(axisShare(-9, kX, tilted), -5);
}

TEST(AxisShare, CosineBeyondOneIsLimited) {
  EXPECT_EQ(axisShare(32767, kX, AcGeVector3d(1.0001, 0, 0)), 32767);
  EXPECT_EQ(axisShare(-32768, kX, AcGeVector3d(1.0001, 0, 0)), -32768);
}

TEST(AxisShare, InvertedSmallestValueFitsSixteenBits) {
  EXPECT_EQ(axisShare(-32768, kX, AcGeVector3d(-1, 0, 0)), 32767);
}

}  // namespace
