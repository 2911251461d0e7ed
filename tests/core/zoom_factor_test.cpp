#include "common_sources/zoom_factor.h"

#include <gtest/gtest.h>

namespace {

TEST(ZoomFactor, IsOneForNoPush) {
  EXPECT_EQ(zoomFactor(0.0), 1.0);
}

TEST(ZoomFactor, GrowsWithAPush) {
  EXPECT_DOUBLE_EQ(zoomFactor(0.1), 1.1);
}

TEST(ZoomFactor, ShrinksWithAPull) {
  EXPECT_DOUBLE_EQ(zoomFactor(-0.1), 0.9);
}

TEST(ZoomFactor, IsCappedAtTwentyPercent) {
  EXPECT_EQ(zoomFactor(0.5), 1.2);
  EXPECT_EQ(zoomFactor(1e300), 1.2);
}

TEST(ZoomFactor, IsFlooredAtTwentyPercent) {
  EXPECT_EQ(zoomFactor(-0.5), 0.8);
  EXPECT_EQ(zoomFactor(-1e300), 0.8);
}

}  // namespace
