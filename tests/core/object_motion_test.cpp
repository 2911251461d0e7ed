#include "common_sources/object_motion.h"

#include <gtest/gtest.h>

namespace {

const ScreenAxes kAxes{AcGeVector3d(-1, 0, 0), AcGeVector3d(0, 0, 1), AcGeVector3d(0, -1, 0)};
const AcGePoint3d kCentre(0, 0, 0);

void expectNear(const AcGePoint3d& actual, const AcGePoint3d& expected) {
  EXPECT_NEAR(actual.x, expected.x, 1e-9);
  EXPECT_NEAR(actual.y, expected.y, 1e-9);
  EXPECT_NEAR(actual.z, expected.z, 1e-9);
}

TEST(ObjectMotion, ObjectsFollowThePushByHalfAUnitPerUnitOfTheCap) {
  const AcGeMatrix3d motion = objectMotion({2, 4, 6, 0, 0, 0}, kAxes, kCentre, false, false);
  expectNear(motion * AcGePoint3d(10, 10, 10), {11, 7, 12});
}

TEST(ObjectMotion, HoverKeepsTheWorldsY) {
  const AcGeMatrix3d motion = objectMotion({2, 4, 6, 0, 0, 0}, kAxes, kCentre, true, false);
  expectNear(motion * AcGePoint3d(10, 10, 10), {11, 10, 12});
}

TEST(ObjectMotion, TurnComesBeforeTheStep) {
  // A quarter of a turn is 785.4 units of the cap.
  const double quarter = 0.5 * 3.14159265358979323846 / 0.002;
  const AcGeMatrix3d motion = objectMotion({20, 0, 0, 0, quarter, 0}, kAxes, kCentre, false, false);
  expectNear(motion * AcGePoint3d(1, 0, 0), {10, 1, 0});
}

TEST(ObjectMotion, SheetMotionStaysInItsPlane) {
  expectNear(sheetMotion(20000, -40000) * AcGePoint3d(1, 1, 1), {2, -1, 1});
}

}  // namespace
