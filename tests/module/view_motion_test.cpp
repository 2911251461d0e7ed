#include "host/doc_data.h"
#include "tests/module/module_fixture.h"

#include <gmock/gmock.h>

#include <cmath>

namespace controller = standin::controller;
namespace host = standin::host;
using standin::Misbehaviour;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr double kTolerance = 1e-12;

/// Plan view from 10 above (2, 3, 0): screen x is world -X, y is +Y, z is +Z; the field is 4 by 9, its
/// root 6.
const host::Camera kPlan{{2, 3, 10}, {2, 3, 0}, {0, 1, 0}, 4, 9, false};

class ViewMotion : public ModuleTest {
 protected:
  void start(const std::map<std::string, std::string>& settings = {}, int rotationMode = 0,
             bool isPerspective = false) {
    std::map<std::string, std::string> changes{{"transSensBase", "100"}, {"rotSensBase", "100"}};
    for (const auto& [key, value] : settings) changes[key] = value;
    writeSettings(changes);
    controller::setAdvancedSettings(rotationMode, 0);
    load();
    host::Camera camera = kPlan;
    camera.isPerspective = isPerspective;
    ASSERT_TRUE(host::setCamera(2, camera));
  }
  host::Camera camera() { return *host::camera(2); }
  void pass(short x, short y, short z, short rx = 0, short ry = 0, short rz = 0) {
    proxy().handleCapIsDeflectedIn3DMode(x, y, z, rx, ry, rz);
  }
  void orderHost(const char* operation, Misbehaviour kind) {
    ASSERT_TRUE(host::faults().inject(operation, {kind, 1, true})) << operation;
  }
  std::uint64_t setViews() { return host::faults().calls("AcGsView::setView"); }
  std::vector<std::string> errors() const { return logTexts("ERR"); }
};

void expectNear(const AcGePoint3d& actual, const AcGePoint3d& expected) {
  EXPECT_NEAR(actual.x, expected.x, kTolerance);
  EXPECT_NEAR(actual.y, expected.y, kTolerance);
  EXPECT_NEAR(actual.z, expected.z, kTolerance);
}

void expectNear(const AcGeVector3d& actual, const AcGeVector3d& expected) {
  expectNear(AcGePoint3d::kOrigin + actual, AcGePoint3d::kOrigin + expected);
}

TEST_F(ViewMotion, PushToTheRightMovesTheCameraToTheScreensLeft) {
  start();
  pass(10, 0, 0);
  expectNear(camera().position, {2 - 0.1 * 5 * 6, 3, 10});
  expectNear(camera().target, {2 - 0.1 * 5 * 6, 3, 0});
  EXPECT_THAT(logTexts("INF", "moveXYZ"), ElementsAre("Move x-Direction, value: 0.1"));
}

TEST_F(ViewMotion, PushUpMovesTheCameraDown) {
  start();
  pass(0, 10, 0);
  expectNear(camera().position, {2, 3 - 0.1 * 5 * 6, 10});
  EXPECT_THAT(logTexts("INF", "moveXYZ"), ElementsAre("Move y-Direction, value: 0.1"));
}

struct ZoomCase {
  short push;
  double factor;
};

class Zooms : public ViewMotion, public ::testing::WithParamInterface<ZoomCase> {};

TEST_P(Zooms, ZoomDividesTheFieldByTheFactor) {
  start();
  pass(0, 0, GetParam().push);
  EXPECT_DOUBLE_EQ(camera().fieldWidth, 4 / GetParam().factor);
  EXPECT_DOUBLE_EQ(camera().fieldHeight, 9 / GetParam().factor);
  expectNear(camera().position, kPlan.position);
}

INSTANTIATE_TEST_SUITE_P(Pushes, Zooms,
                         ::testing::Values(ZoomCase{50, 1.2}, ZoomCase{-50, 0.8}, ZoomCase{10, 1.1},
                                           ZoomCase{-10, 0.9}, ZoomCase{32767, 1.2}, ZoomCase{-32768, 0.8}));

TEST_F(ViewMotion, ZoomIsLogged) {
  start();
  pass(0, 0, -50);
  EXPECT_THAT(logTexts("INF", "moveXYZ"), ElementsAre("Move z-Direction, value: -0.5"));
}

TEST_F(ViewMotion, HoveringPerspectiveFliesForwardAndKeepsItsElevation) {
  start({}, 100, true);
  host::setCamera(2, {{0, -8, 6}, {0, 0, 0}, {0, 0.6, 0.8}, 4, 9, true});
  pass(0, 0, 10);
  const double step = -0.1 * 5 * 6;
  expectNear(camera().position, {0, -8 + step * -0.8, 6});
  EXPECT_EQ(camera().fieldWidth, 4);
  EXPECT_TRUE(camera().isPerspective);
}

TEST_F(ViewMotion, HoveringPanInPerspectiveKeepsTheElevation) {
  start({}, 100, true);
  host::setCamera(2, {{0, -8, 6}, {0, 0, 0}, {0, 0.6, 0.8}, 4, 9, true});
  pass(0, 10, 0);
  EXPECT_EQ(camera().position.z, 6);
  EXPECT_NEAR(camera().position.y, -8 - 0.1 * 5 * 6 * 0.6, kTolerance);
}

TEST_F(ViewMotion, HoverInAParallelViewZoomsAndMovesFreely) {
  start({}, 100);
  host::setCamera(2, {{0, -8, 6}, {0, 0, 0}, {0, 0.6, 0.8}, 4, 9, false});
  pass(0, 10, 10);
  EXPECT_NE(camera().position.z, 6);
  EXPECT_DOUBLE_EQ(camera().fieldWidth, 4 / 1.1);
}

TEST_F(ViewMotion, PerspectiveWithoutHoverZooms) {
  start({}, 0, true);
  pass(0, 0, 10);
  EXPECT_DOUBLE_EQ(camera().fieldWidth, 4 / 1.1);
  EXPECT_TRUE(camera().isPerspective);
}

class CameraModes : public ViewMotion, public ::testing::WithParamInterface<int> {};

TEST_P(CameraModes, CameraModeInvertsTranslationAndZoom) {
  start({}, GetParam());
  pass(10, 10, 10);
  expectNear(camera().position, {2 + 0.1 * 5 * 6, 3 + 0.1 * 5 * 6, 10});
  EXPECT_DOUBLE_EQ(camera().fieldWidth, 4 / 0.9);
}

TEST_P(CameraModes, CameraModeInvertsEveryRotation) {
  start({}, GetParam());
  const AcGePoint3d centre = GetParam() == 3 ? AcGePoint3d(2, 3, 0) : AcGePoint3d(0, 0, 0);
  AcGePoint3d expected = kPlan.position;
  expected.rotateBy(-0.5, {-1, 0, 0}, centre);
  pass(0, 0, 0, 50, 0, 0);
  expectNear(camera().position, expected);
}

INSTANTIATE_TEST_SUITE_P(StandardAndTarget, CameraModes, ::testing::Values(2, 3));

struct TurnCase {
  int axis;
  double angle;
  AcGeVector3d about;
};

class Turns : public ViewMotion, public ::testing::WithParamInterface<TurnCase> {};

TEST_P(Turns, TurnKeepsTheSignOfXAndInvertsYAndZ) {
  start();
  std::array<short, 3> cap{};
  cap[static_cast<std::size_t>(GetParam().axis)] = 50;
  pass(0, 0, 0, cap[0], cap[1], cap[2]);
  AcGePoint3d position = kPlan.position;
  AcGeVector3d up = kPlan.up;
  position.rotateBy(GetParam().angle, GetParam().about, kPlan.target);
  up.rotateBy(GetParam().angle, GetParam().about);
  expectNear(camera().position, position);
  expectNear(camera().target, kPlan.target);
  expectNear(camera().up, up);
}

INSTANTIATE_TEST_SUITE_P(Axes, Turns,
                         ::testing::Values(TurnCase{0, 0.5, {-1, 0, 0}}, TurnCase{1, -0.5, {0, 1, 0}},
                                           TurnCase{2, -0.5, {0, 0, 1}}));

TEST_F(ViewMotion, RotationsFollowOneAnotherInTheOrderXYZ) {
  start();
  pass(0, 0, 0, 10, 20, 30);
  EXPECT_THAT(logTexts("DBG", "rotate"),
              ElementsAre("Rotate Axis: 0.1(0)", "Rotate Axis: -0.2(1)", "Rotate Axis: -0.3(2)"));
  AcGePoint3d position = kPlan.position;
  position.rotateBy(0.1, {-1, 0, 0}, kPlan.target);
  position.rotateBy(-0.2, {0, 1, 0}, kPlan.target);
  position.rotateBy(-0.3, {0, 0, 1}, kPlan.target);
  expectNear(camera().position, position);
}

struct CentreCase {
  int mode;
  bool isPerspective;
  AcGePoint3d centre;
};

class Centres : public ViewMotion, public ::testing::WithParamInterface<CentreCase> {};

TEST_P(Centres, RotationCentreFollowsTheRotationMode) {
  start({}, GetParam().mode, GetParam().isPerspective);
  const double sign = isCameraMode(proxy().rotationMode().rotCenterMode) ? -1 : 1;
  AcGePoint3d position = kPlan.position, target = kPlan.target;
  position.rotateBy(0.5 * sign, {-1, 0, 0}, GetParam().centre);
  target.rotateBy(0.5 * sign, {-1, 0, 0}, GetParam().centre);
  pass(0, 0, 0, 50, 0, 0);
  expectNear(camera().position, position);
  expectNear(camera().target, target);
}

INSTANTIATE_TEST_SUITE_P(Modes, Centres,
                         ::testing::Values(CentreCase{0, false, {2, 3, 0}}, CentreCase{0, true, {2, 3, 0}},
                                           CentreCase{1, false, {0, 0, 0}}, CentreCase{1, true, {0, 0, 0}},
                                           CentreCase{2, false, {0, 0, 0}}, CentreCase{2, true, {2, 3, 10}},
                                           CentreCase{3, false, {2, 3, 0}}, CentreCase{3, true, {2, 3, 0}},
                                           CentreCase{4, false, {0, 0, 0}}, CentreCase{4, true, {2, 3, 10}},
                                           CentreCase{7, false, {0, 0, 0}}));

TEST_F(ViewMotion, SelectionIsTheCentreInPreferenceToTheMode) {
  start();
  ASSERT_TRUE(host::select({0x12}));
  AcGePoint3d target = kPlan.target;
  target.rotateBy(-0.5, {0, 1, 0}, {9, 0, 0});
  pass(0, 0, 0, 0, 50, 0);
  expectNear(camera().target, target);
}

TEST_F(ViewMotion, SelectionIsNoCentreWhenTheSwitchIsOff) {
  start({{"toggleRotationCenter", "off"}});
  ASSERT_TRUE(host::select({0x12}));
  pass(0, 0, 0, 50, 0, 0);
  expectNear(camera().target, kPlan.target);
}

TEST_F(ViewMotion, SelectedLineTakesTheRotationAboutItsOwnAxis) {
  start({{"toggleRotationAxis", "on"}});
  ASSERT_TRUE(host::select({0x10}));
  pass(0, 0, 0, 50, 50, 50);
  AcGePoint3d position = kPlan.position;
  position.rotateBy(-0.5, {0, 0, 1}, {1, 1, 0});
  expectNear(camera().position, position);
  EXPECT_THAT(logTexts("DBG", "rotate"), ElementsAre("Rotate Axis: -0.5(2)"));
}

TEST_F(ViewMotion, ShareOfATiltedLineIsTruncated) {
  start({{"toggleRotationAxis", "on"}});
  ASSERT_TRUE(host::select({0x11}));
  pass(0, 0, 0, 50, 50, 50);
  EXPECT_THAT(logTexts("DBG", "rotate"), ElementsAre("Rotate Axis: -0.35(0)", "Rotate Axis: -0.35(1)"));
}

TEST_F(ViewMotion, AxisSwitchWithoutALineFallsBackToTheCentre) {
  start({{"toggleRotationAxis", "on"}});
  ASSERT_TRUE(host::select({0x12}));
  AcGePoint3d target = kPlan.target;
  target.rotateBy(-0.5, {0, 1, 0}, {9, 0, 0});
  pass(0, 0, 0, 0, 50, 0);
  expectNear(camera().target, target);
}

TEST_F(ViewMotion, LevelHorizonHasNoRoll) {
  start({}, 10);
  pass(0, 0, 0, 0, 0, 50);
  EXPECT_EQ(setViews(), 0u);
  expectNear(camera().up, kPlan.up);
  EXPECT_THAT(logTexts("DBG", "rotate"), IsEmpty());
}

TEST_F(ViewMotion, LevelHorizonTurnsAboutTheWorldsVertical) {
  start({}, 10);
  host::setCamera(2, {{0, -8, 6}, {0, 0, 0}, {0, 0.6, 0.8}, 4, 9, false});
  AcGePoint3d position(0, -8, 6);
  position.rotateBy(-0.5, {0, 0, 1});
  pass(0, 0, 0, 0, 50, 0);
  expectNear(camera().position, position);
}

TEST_F(ViewMotion, LevelHorizonUpsideDownTurnsTheOtherWay) {
  start({}, 10);
  host::setCamera(2, {{0, -8, 6}, {0, 0, 0}, {0, -0.6, -0.8}, 4, 9, false});
  AcGePoint3d position(0, -8, 6);
  position.rotateBy(0.5, {0, 0, 1});
  pass(0, 0, 0, 0, 50, 0);
  expectNear(camera().position, position);
}

TEST_F(ViewMotion, ZeroSkipsAnAxisEntirely) {
  start();
  pass(0, 0, 0);
  EXPECT_EQ(setViews(), 0u);
  EXPECT_THAT(logTexts("INF", "moveXYZ"), IsEmpty());
  EXPECT_EQ(mHost.mUpdates.size(), 1u) << "the view is updated all the same";
}

TEST_F(ViewMotion, MissingViewStopsThePass) {
  start();
  orderHost("acgsGetGsView", Misbehaviour::kFail);
  pass(10, 0, 0);
  EXPECT_THAT(errors(),
              ElementsAre("AcGsView object could not be retrieved!", "ViewP could not be retrieved!"));
  EXPECT_THAT(mHost.mUpdates, IsEmpty());
}

TEST_F(ViewMotion, FailedAxesStopThePass) {
  start();
  orderHost("AcGsView::target", Misbehaviour::kThrow);
  pass(10, 0, 0);
  EXPECT_THAT(errors(), ElementsAre("Error calcScreenAxesRelativeToObject()"));
  EXPECT_THAT(mHost.mUpdates, IsEmpty());
}

struct MotionFault {
  const char* operation;
  std::array<short, 6> cap;
  const char* text;
};

class MotionFaults : public ViewMotion, public ::testing::WithParamInterface<MotionFault> {};

TEST_P(MotionFaults, MotionFaultIsLoggedWhereItIsMetAndTheNextPassWorks) {
  start();
  const auto [x, y, z, rx, ry, rz] = GetParam().cap;
  orderHost(GetParam().operation, Misbehaviour::kThrow);
  pass(x, y, z, rx, ry, rz);
  EXPECT_THAT(errors(), ElementsAre(GetParam().text));
  const std::size_t updates = mHost.mUpdates.size();
  pass(x, y, z, rx, ry, rz);
  EXPECT_EQ(mHost.mUpdates.size(), updates + 1);
  EXPECT_EQ(errors().size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(
    Operations, MotionFaults,
    ::testing::Values(
        MotionFault{"AcGsView::fieldWidth", {10, 0, 0, 0, 0, 0}, "Error move3D()"},
        MotionFault{"AcGsView::setView", {10, 0, 0, 0, 0, 0}, "Error move3D()"},
        MotionFault{"AcGsView::zoom", {0, 0, 10, 0, 0, 0}, "Error moveXYZ()"},
        MotionFault{"AcGsView::setView", {0, 0, 0, 10, 0, 0}, "Error rotate()"},
        MotionFault{"AcGsView::isPerspective", {10, 0, 0, 0, 0, 0}, "Error handleCapIsDeflectedIn3DMode()"},
        MotionFault{"AcGsView::update", {10, 0, 0, 0, 0, 0}, "Error handleCapIsDeflectedIn3DMode()"}));

TEST_F(ViewMotion, FailureOfOneRotationDoesNotStopTheOthers) {
  start();
  orderHost("AcGsView::setView", Misbehaviour::kThrow);
  pass(0, 0, 0, 10, 0, 10);
  EXPECT_THAT(errors(), ElementsAre("Error rotate()"));
  EXPECT_EQ(setViews(), 2u);
  EXPECT_EQ(mHost.mUpdates.size(), 1u);
}

TEST_F(ViewMotion, NothingIsDoneToAViewThatIsNotThere) {
  start();
  const AcGeVector3d x(1, 0, 0), y(0, 1, 0), z(0, 0, 1);
  AcGeVector3d axis(1, 0, 0);
  proxy().moveXYZ(nullptr, 1, 1, 1, &x, &y, &z, 0, false, false);
  proxy().move3D(nullptr, 1, &x, false, false);
  proxy().rotate(nullptr, 1, 0, &AcGePoint3d::kOrigin, &axis, 0, false, false);
  EXPECT_THAT(errors(), IsEmpty());
  EXPECT_EQ(setViews(), 0u);
}

TEST_F(ViewMotion, AngleOfZeroTurnsNothing) {
  start();
  AcGsView* viewP = nullptr;
  int number = 0;
  proxy().retrieveViewParams(&viewP, &number);
  AcGeVector3d axis(1, 0, 0);
  proxy().rotate(viewP, 0.0, 0, &AcGePoint3d::kOrigin, &axis, 0, false, false);
  proxy().move3D(viewP, 0.0, &axis, false, false);
  EXPECT_EQ(setViews(), 0u);
}

TEST_F(ViewMotion, RotatedAxisOfALevelHorizonIsHandedBack) {
  start();
  AcGsView* viewP = nullptr;
  int number = 0;
  proxy().retrieveViewParams(&viewP, &number);
  AcGeVector3d axis(0, 1, 0);
  proxy().rotate(viewP, 0.1, 1, &AcGePoint3d::kOrigin, &axis, 0, true, false);
  expectNear(axis, {0, 0, 1});
}

TEST_F(ViewMotion, SelectionCountsFromTheFirstPassEvenWhenThatOnlyPushes) {
  start();
  ASSERT_TRUE(host::select({0x12}));
  deflect({0, 0, 1, 0, 0, 0});
  proxy().handleDeviceCap();
  host::selectNone();
  AcGePoint3d target = camera().target;
  target.rotateBy(-0.5, {0, 1, 0}, {9, 0, 0});
  deflect({0, 0, 0, 0, 50, 0});
  proxy().handleDeviceCap();
  expectNear(camera().target, target);
}

TEST_F(ViewMotion, SelectionCountsFromTheFirstPassThatHasAView) {
  start();
  ASSERT_TRUE(host::select({0x12}));
  orderHost("acgsGetGsView", Misbehaviour::kFail);
  deflect({0, 0, 0, 0, 50, 0});
  proxy().handleDeviceCap();
  ASSERT_TRUE(proxy().isCapMoving());
  AcGePoint3d target = camera().target;
  target.rotateBy(-0.5, {0, 1, 0}, {9, 0, 0});
  proxy().handleDeviceCap();
  expectNear(camera().target, target);
}

TEST_F(ViewMotion, SelectionMadeAfterTheFirstPassWithAViewWaits) {
  start();
  orderHost("acgsGetGsView", Misbehaviour::kFail);
  deflect({0, 0, 0, 50, 0, 0});
  proxy().handleDeviceCap();
  proxy().handleDeviceCap();
  ASSERT_TRUE(host::select({0x12}));
  const AcGePoint3d target = camera().target;
  proxy().handleDeviceCap();
  expectNear(camera().target, target);
}

TEST_F(ViewMotion, SelectionOfAClosedDocumentIsForgotten) {
  start();
  DocDataManager manager;
  ASSERT_TRUE(host::select({0x12}));
  deflect({0, 0, 0, 1, 0, 0});
  proxy().handleDeviceCap();
  host::closeDocument();
  host::openDocument(std::make_unique<standin::Drawing>());
  ASSERT_TRUE(host::setCamera(2, kPlan));
  deflect({0, 0, 0, 50, 0, 0});
  proxy().handleDeviceCap();
  expectNear(camera().target, kPlan.target);
}

TEST_F(ViewMotion, SelectionOfAnEarlierMovementIsForgotten) {
  start();
  ASSERT_TRUE(host::select({0x12}));
  deflect({0, 0, 0, 1, 0, 0});
  proxy().handleDeviceCap();
  deflect({});
  proxy().handleDeviceCap();
  host::selectNone();
  deflect({0, 0, 1, 0, 0, 0});
  proxy().handleDeviceCap();
  const AcGePoint3d target = camera().target;
  deflect({0, 0, 0, 50, 0, 0});
  proxy().handleDeviceCap();
  expectNear(camera().target, target);
}

TEST_F(ViewMotion, CentreOfAnEarlierMovementIsForgottenWhileALineIsTheAxis) {
  start();
  ASSERT_TRUE(host::select({0x12}));
  deflect({0, 0, 0, 0, 1, 0});
  proxy().handleDeviceCap();
  deflect({});
  proxy().handleDeviceCap();
  mCoreP->setToggleRotationAxis(true);
  ASSERT_TRUE(host::select({0x10}));
  deflect({0, 0, 0, 0, 1, 0});
  proxy().handleDeviceCap();
  mCoreP->setToggleRotationAxis(false);
  const AcGePoint3d target = camera().target;
  deflect({0, 0, 0, 0, 50, 0});
  proxy().handleDeviceCap();
  expectNear(camera().target, target);
}

TEST_F(ViewMotion, AxisOfAnEarlierMovementIsForgottenWhileTheSwitchIsOff) {
  start({{"toggleRotationAxis", "on"}});
  ASSERT_TRUE(host::select({0x10}));
  deflect({0, 0, 0, 0, 0, 1});
  proxy().handleDeviceCap();
  deflect({});
  proxy().handleDeviceCap();
  mCoreP->setToggleRotationAxis(false);
  host::selectNone();
  deflect({0, 0, 0, 0, 0, 1});
  proxy().handleDeviceCap();
  mCoreP->setToggleRotationAxis(true);
  const AcGePoint3d target = camera().target;
  deflect({0, 0, 0, 0, 0, 50});
  proxy().handleDeviceCap();
  expectNear(camera().target, target);
}

TEST_F(ViewMotion, ViewThatTakesOverFromObjectsTurnsAboutTheirCentre) {
  start();
  ASSERT_TRUE(host::select({0x12}));
  proxy().setObjectMoveMode(true);
  deflect({0, 0, 0, 0, 0, 50});
  proxy().handleDeviceCap();
  proxy().setObjectMoveMode(false);
  AcGePoint3d target = camera().target;
  target.rotateBy(-0.5, {0, 1, 0}, {9, 0, 0});
  deflect({0, 0, 0, 0, 50, 0});
  proxy().handleDeviceCap();
  expectNear(camera().target, target);
}

TEST_F(ViewMotion, CameraModesInvertTheOtherRotationsAndTheFlightToo) {
  start({}, 103, true);
  host::setCamera(2, {{0, -8, 6}, {0, 0, 0}, {0, 0.6, 0.8}, 4, 9, true});
  pass(0, 0, 10, 0, 10, 20);
  EXPECT_THAT(logTexts("DBG", "rotate"), ElementsAre("Rotate Axis: 0.1(1)", "Rotate Axis: 0.2(2)"));
  EXPECT_THAT(logTexts("INF", "moveXYZ"), ElementsAre("Move z-Direction, value: -0.1"));
}

}  // namespace
