#include "host_fixture.h"

// clang-format off
#include "gepnt2d.h"
#include "gemat3d.h"
// clang-format on

#include <gtest/gtest.h>

#include <cmath>

namespace {

const double kQuarter = std::acos(0.0);

TEST(Geometry, RotationFollowsTheRightHandRule) {
  AcGeVector3d v(1, 0, 0);
  v.rotateBy(kQuarter, {0, 0, 1});
  EXPECT_NEAR(v.x, 0, 1e-15);
  EXPECT_NEAR(v.y, 1, 1e-15);
}

TEST(Geometry, PointTurnsAboutALineThroughAPoint) {
  AcGePoint3d p(3, 2, 7);
  p.rotateBy(kQuarter, {0, 0, 1}, {1, 2, 0});
  expectPoint(p, 1, 4, 7);
}

TEST(Geometry, PointTurnsAboutTheOriginByDefault) {
  AcGePoint3d p(0, 1, 0);
  p.rotateBy(kQuarter, {1, 0, 0});
  expectPoint(p, 0, 0, 1);
}

TEST(Geometry, RotationIgnoresTheLengthOfTheAxis) {
  AcGePoint3d p(1, 2, 3);
  AcGePoint3d q = p;
  p.rotateBy(0.7, {1, 1, 0});
  q.rotateBy(0.7, {250, 250, 0});
  expectPoint(p, q.x, q.y, q.z);
}

TEST(Geometry, AxisWithoutLengthTurnsNothing) {
  AcGePoint3d p(1, 2, 3);
  p.rotateBy(1, {0, 0, 0});
  expectPoint(p, 1, 2, 3);
}

TEST(Geometry, NormalizeMakesTheLengthOne) {
  AcGeVector3d v(3, 0, -4);
  v.normalize();
  EXPECT_DOUBLE_EQ(v.x, 0.6);
  EXPECT_DOUBLE_EQ(v.z, -0.8);
}

TEST(Geometry, NormalizeLeavesAVectorShorterThanTheToleranceAsItIs) {
  AcGeVector3d tiny(9e-11, 0, 0);
  tiny.normalize();
  EXPECT_EQ(tiny.x, 9e-11);
  AcGeVector3d longEnough(2e-10, 0, 0);
  longEnough.normalize();
  EXPECT_EQ(longEnough.x, 1);
}

TEST(Geometry, CrossProductOfXAndYIsZ) {
  const AcGeVector3d z = AcGeVector3d(1, 0, 0).crossProduct({0, 1, 0});
  EXPECT_EQ(z.z, 1);
  EXPECT_EQ(AcGeVector3d(1, 2, 3).dotProduct({4, 5, 6}), 32);
}

TEST(Geometry, DefaultMatrixIsTheIdentity) {
  expectPoint(AcGeMatrix3d() * AcGePoint3d(1, 2, 3), 1, 2, 3);
}

TEST(Geometry, ProductOfMatricesAppliesTheRightOneFirst) {
  const AcGeMatrix3d product =
      AcGeMatrix3d().setTranslation({10, 0, 0}) * AcGeMatrix3d::rotation(kQuarter, {0, 0, 1}, {0, 0, 0});
  expectPoint(product * AcGePoint3d(1, 0, 0), 10, 1, 0);
}

TEST(Geometry, MatrixAndPointRotateAlike) {
  const AcGeVector3d axis(1, -2, 0.5);
  const AcGePoint3d centre(4, 5, 6);
  AcGePoint3d p(-3, 2, 9);
  const AcGePoint3d byMatrix = AcGeMatrix3d::rotation(1.1, axis, centre) * p;
  p.rotateBy(1.1, axis, centre);
  expectPoint(byMatrix, p.x, p.y, p.z);
}

TEST(Geometry, PlanePointsTakeVectors) {
  const AcGePoint2d p = AcGePoint2d(1, 2) + AcGeVector2d(3, 4) * 2;
  EXPECT_EQ(p.x, 7);
  EXPECT_EQ((p - AcGePoint2d::kOrigin).y, 10);
}

}  // namespace
