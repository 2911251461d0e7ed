#include "common_sources/camera.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

const Camera kCamera{{10, -20, 15}, {1, 2, 3}, {0.6, 0, 0.8}, 16, 9};

void expectNear(const AcGeVector3d& actual, const AcGeVector3d& expected) {
  constexpr double kTolerance = 1e-14;
  EXPECT_NEAR(actual.x, expected.x, kTolerance);
  EXPECT_NEAR(actual.y, expected.y, kTolerance);
  EXPECT_NEAR(actual.z, expected.z, kTolerance);
}

void expectNear(const AcGePoint3d& actual, const AcGePoint3d& expected) {
  expectNear(actual - AcGePoint3d(0, 0, 0), expected - AcGePoint3d(0, 0, 0));
}

TEST(Camera, TurnEqualsTheHostsRotation) {
  AcGeVector3d tilted(1, -2, 3);
  tilted.normalize();
  const AcGePoint3d centre(4, 5, -6);
  for (const AcGeVector3d& axis : {AcGeVector3d(1, 0, 0), AcGeVector3d(0, -1, 0), tilted})
    for (const double angle : {0.002, -0.5, 3.2768}) {
      Camera camera = kCamera;
      turnCamera(camera, angle, axis, centre);
      AcGePoint3d position = kCamera.position, target = kCamera.target;
      AcGeVector3d up = kCamera.up;
      expectNear(camera.position, position.rotateBy(angle, axis, centre));
      expectNear(camera.target, target.rotateBy(angle, axis, centre));
      expectNear(camera.up, up.rotateBy(angle, axis));
    }
}

TEST(Camera, QuarterTurnIsRightHanded) {
  Camera camera{{1, 0, 0}, {0, 0, 0}, {0, 0, 1}, 4, 3};
  turnCamera(camera, std::acos(0.0), {0, 0, 1}, {0, 0, 0});
  expectNear(camera.position, {0, 1, 0});
  expectNear(camera.up, {0, 0, 1});
}

TEST(Camera, AxisWithoutLengthTurnsNothing) {
  for (const AcGeVector3d& axis : {AcGeVector3d(0, 0, 0), AcGeVector3d(0, 1e-11, 0)}) {
    Camera camera = kCamera;
    turnCamera(camera, 1.0, axis, {0, 0, 0});
    EXPECT_EQ(camera.position.x, kCamera.position.x);
    EXPECT_EQ(camera.up.z, kCamera.up.z);
  }
}

TEST(Camera, MoveKeepsTheDirectionOfView) {
  Camera camera = kCamera;
  moveCamera(camera, {1, 2, -3});
  expectNear(camera.position, {11, -18, 12});
  expectNear(camera.target, {2, 4, 0});
  expectNear(camera.up, kCamera.up);
}

}  // namespace
