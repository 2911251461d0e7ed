#include "common_sources/cap_values.h"

#include <gtest/gtest.h>

namespace {

TEST(CapValues, ValuesEqualToTheThresholdCountAsReleased) {
  EXPECT_TRUE(isCapReleased({{5, -5, 5, -5, 5, -5}, 0, 0}, 5));
}

TEST(CapValues, OneAxisBeyondTheThresholdIsADeflection) {
  for (std::size_t axis = 0; axis < 6; ++axis) {
    CapValues cap;
    cap.mAxes[axis] = 6;
    EXPECT_FALSE(isCapReleased(cap, 5)) << "axis " << axis;
    cap.mAxes[axis] = -6;
    EXPECT_FALSE(isCapReleased(cap, 5)) << "axis " << axis;
  }
}

TEST(CapValues, SmallestValueHasAnAbsoluteValue) {
  EXPECT_FALSE(isCapReleased({{-32768, 0, 0, 0, 0, 0}, 0, 0}, 32767));
  EXPECT_TRUE(isCapReleased({{-32768, 0, 0, 0, 0, 0}, 0, 0}, 32768));
}

TEST(CapValues, ZeroIsReleasedAtThresholdZeroButNotBelow) {
  EXPECT_TRUE(isCapReleased({}, 0));
  EXPECT_FALSE(isCapReleased({}, -1));
}

}  // namespace
