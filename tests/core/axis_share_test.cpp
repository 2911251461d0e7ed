#include "common_sources/axis_share.h"

#include <gtest/gtest.h>

namespace {

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
