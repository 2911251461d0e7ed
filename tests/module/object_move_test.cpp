#include "standin/objectarx/call_record.h"
#include "tests/module/module_fixture.h"

// clang-format off
#include "acedads.h"
#include "adscodes.h"
// clang-format on

#include <gmock/gmock.h>

namespace controller = standin::controller;
namespace host = standin::host;
using standin::Misbehaviour;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr double kTolerance = 1e-9;

class ObjectMove : public ModuleTest {
 protected:
  void start(int rotationMode = 0) {
    controller::setAdvancedSettings(rotationMode, 0);
    load();
    proxy().setObjectMoveMode(true);
    // Plan view: screen x is world -X, y is +Y, z is +Z.
    ASSERT_TRUE(host::setCamera(2, {{0, 0, 10}, {0, 0, 0}, {0, 1, 0}, 4, 9, false}));
  }
  void startOnTheSheet() {
    start();
    ASSERT_TRUE(host::setVariable(L"TILEMODE", L"0"));
    ASSERT_TRUE(host::setVariable(L"CVPORT", L"1"));
  }
  void movement(std::array<std::int16_t, 6> cap) {
    deflect(cap);
    proxy().handleDeviceCap();
    deflect({});
    proxy().handleDeviceCap();
  }
  AcGePoint3d pointOf(std::uint64_t handle, std::size_t index = 0) {
    return host::drawing()->find(handle)->points().at(index);
  }
  void orderHost(const char* operation, Misbehaviour kind, bool isOnce = true) {
    ASSERT_TRUE(host::faults().inject(operation, {kind, 1, isOnce})) << operation;
  }
  std::vector<std::string> errors() const { return logTexts("ERR"); }
  void expectNothingHeld() {
    const host::Counts counts = host::counts();
    EXPECT_EQ(counts.lockDepth, 0);
    EXPECT_EQ(counts.openObjects, 0u);
    EXPECT_EQ(counts.selectionSetsAlive, 0u);
    EXPECT_THAT(counts.breaches, IsEmpty());
  }
};

void expectNear(const AcGePoint3d& actual, const AcGePoint3d& expected) {
  EXPECT_NEAR(actual.x, expected.x, kTolerance);
  EXPECT_NEAR(actual.y, expected.y, kTolerance);
  EXPECT_NEAR(actual.z, expected.z, kTolerance);
}

TEST_F(ObjectMove, SelectionMovesAgainstTheScreensXAxis) {
  start();
  ASSERT_TRUE(host::select({0x12}));
  movement({100, 0, 0, 0, 0, 0});
  expectNear(pointOf(0x12), {9 + 50, 0, 0});
  expectNothingHeld();
}

TEST_F(ObjectMove, SelectionMovesAlongTheScreensYAndZAxes) {
  start();
  ASSERT_TRUE(host::select({0x12}));
  movement({0, 10, 20, 0, 0, 0});
  expectNear(pointOf(0x12), {9, 5, 10});
}

TEST_F(ObjectMove, ViewStaysWhereItIsAndIsUpdated) {
  start();
  ASSERT_TRUE(host::select({0x12}));
  movement({100, 10, 10, 10, 10, 10});
  expectNear(host::camera(2)->position, {0, 0, 10});
  EXPECT_EQ(mHost.mUpdates.size(), 1u);
}

TEST_F(ObjectMove, OnlyTheSelectionMoves) {
  start();
  ASSERT_TRUE(host::select({0x12}));
  movement({100, 0, 0, 0, 0, 0});
  expectNear(pointOf(0x10), {1, 1, 0});
}

TEST_F(ObjectMove, HoverNeverChangesTheWorldsY) {
  start(100);
  ASSERT_TRUE(host::select({0x12}));
  movement({10, 40, 20, 0, 0, 0});
  expectNear(pointOf(0x12), {9 + 5, 0, 10});
}

struct TurnCase {
  std::array<std::int16_t, 6> cap;
  double angle;
  AcGeVector3d axis;
};

class ObjectTurns : public ObjectMove, public ::testing::WithParamInterface<TurnCase> {};

TEST_P(ObjectTurns, ObjectsTurnAboutTheSelectionsCentre) {
  start();
  ASSERT_TRUE(host::select({0x10}));
  AcGePoint3d expected(1, 1, 0);
  expected.rotateBy(GetParam().angle, GetParam().axis, {1, 1, 2.5});
  movement(GetParam().cap);
  expectNear(pointOf(0x10), expected);
}

INSTANTIATE_TEST_SUITE_P(Axes, ObjectTurns,
                         ::testing::Values(TurnCase{{0, 0, 0, 100, 0, 0}, -0.2, {-1, 0, 0}},
                                           TurnCase{{0, 0, 0, 0, 100, 0}, 0.2, {0, 1, 0}},
                                           TurnCase{{0, 0, 0, 0, 0, 100}, 0.2, {0, 0, 1}}));

TEST_F(ObjectMove, TurnsAboutZThenYThenXActBeforeTheMove) {
  start();
  ASSERT_TRUE(host::select({0x10}));
  const AcGePoint3d centre(1, 1, 2.5);
  AcGePoint3d expected(1, 1, 0);
  expected.rotateBy(30 * 0.002, {0, 0, 1}, centre);
  expected.rotateBy(20 * 0.002, {0, 1, 0}, centre);
  expected.rotateBy(10 * -0.002, {-1, 0, 0}, centre);
  expected = expected + AcGeVector3d(3.5, 4, 4.5);
  movement({7, 8, 9, 10, 20, 30});
  expectNear(pointOf(0x10), expected);
}

TEST_F(ObjectMove, LevelHorizonIgnoresTheTwist) {
  start(10);
  ASSERT_TRUE(host::select({0x11}));
  movement({0, 0, 0, 0, 0, 100});
  expectNear(pointOf(0x11), {-5, -5, 0});
}

TEST_F(ObjectMove, LevelHorizonTurnsAboutTheWorldsY) {
  start(10);
  ASSERT_TRUE(host::setCamera(2, {{0, -10, 0}, {0, 0, 0}, {0, 0, 1}, 4, 9, false}));
  ASSERT_TRUE(host::select({0x10}));
  AcGePoint3d expected(1, 1, 0);
  expected.rotateBy(0.2, {0, 1, 0}, {1, 1, 2.5});
  movement({0, 0, 0, 0, 100, 0});
  expectNear(pointOf(0x10), expected);
}

TEST_F(ObjectMove, CentreFollowsTheSelectionFromPassToPass) {
  start();
  ASSERT_TRUE(host::select({0x10}));
  deflect({10, 0, 0, 0, 0, 100});
  proxy().handleDeviceCap();
  proxy().handleDeviceCap();
  const AcGePoint3d middle = pointOf(0x10, 0) + (pointOf(0x10, 1) - pointOf(0x10, 0)) * 0.5;
  expectNear(middle, {1 + 10, 1, 2.5});
  deflect({});
  proxy().handleDeviceCap();
}

TEST_F(ObjectMove, ViewMovesWhenNothingIsSelected) {
  start();
  movement({100, 0, 0, 0, 0, 0});
  EXPECT_NE(host::camera(2)->position.x, 0);
  EXPECT_EQ(host::counts().locks, 0u);
}

TEST_F(ObjectMove, ViewMovesWithoutADocument) {
  start();
  ASSERT_TRUE(host::select({0x12}));
  orderHost("AcApDocManager::curDocument", Misbehaviour::kFail);
  movement({100, 0, 0, 0, 0, 0});
  EXPECT_NE(host::camera(2)->position.x, 0);
}

TEST_F(ObjectMove, NoSelectionIsAskedForWithoutADocument) {
  start();
  ASSERT_TRUE(host::select({0x12}));
  orderHost("AcApDocManager::curDocument", Misbehaviour::kFail, false);
  const AcGeVector3d x(1, 0, 0), y(0, 1, 0), z(0, 0, 1);
  EXPECT_FALSE(proxy().transformSelection3d(1, 0, 0, 0, 0, 0, &x, &y, &z, false, false));
  EXPECT_FALSE(proxy().transformSelection2d(1, 0));
  EXPECT_EQ(host::faults().calls("acedSSGet"), 0u);
  EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(ObjectMove, DocumentIsLockedSilentlyUntilTheRelease) {
  start();
  ASSERT_TRUE(host::select({0x12}));
  deflect({10, 0, 0, 0, 0, 0});
  proxy().handleDeviceCap();
  proxy().handleDeviceCap();
  EXPECT_EQ(host::counts().lockDepth, 1);
  EXPECT_THAT(logTexts("TRC", "transformSelection3d"), IsEmpty());
  deflect({});
  proxy().handleDeviceCap();
  expectNothingHeld();
}

TEST_F(ObjectMove, EntitiesThatCannotBeOpenedArePassedOver) {
  start();
  host::drawing()->addLayer({"Locked", 1, true, true});
  host::drawing()->add(standin::makeLine({0x30, "Locked", 256}, {0, 0, 0}, {2, 0, 0}));
  ASSERT_TRUE(host::select({0x30, 0x11, 0x12}));
  host::drawing()->erase(0x11);
  movement({10, 0, 0, 0, 0, 0});
  expectNear(pointOf(0x30), {0, 0, 0});
  expectNear(pointOf(0x12), {9 + 5, 0, 0});
  EXPECT_THAT(errors(), IsEmpty());
  EXPECT_EQ(host::faults().calls("acedRedraw"), 0u) << "the view's update shows the change";
  expectNothingHeld();
}

TEST_F(ObjectMove, EntitiesWithoutABoxAreLeftOutOfTheCentre) {
  start();
  ASSERT_TRUE(host::select({0x11, 0x12}));
  host::drawing()->erase(0x11);
  AcGePoint3d centre;
  ads_name set{};
  ASSERT_EQ(acedSSGet(L"I", nullptr, nullptr, nullptr, set), RTNORM);
  EXPECT_TRUE(proxy().getSelObjectsCenter(set, &centre));
  acedSSFree(set);
  expectNear(centre, {9, 0, 0});
}

class RefusedLocks : public ObjectMove, public ::testing::WithParamInterface<bool> {};

TEST_P(RefusedLocks, RefusedLockMovesTheViewInsteadAndIsLogged) {
  GetParam() ? startOnTheSheet() : start();
  ASSERT_TRUE(host::select({0x12}));
  orderHost("AcApDocManager::lockDocument", Misbehaviour::kFail);
  movement({100, 0, 0, 0, 0, 0});
  EXPECT_THAT(errors(), ElementsAre("Error transformSelection()"));
  expectNear(pointOf(0x12), {9, 0, 0});
  expectNothingHeld();
}

INSTANTIATE_TEST_SUITE_P(ModelAndSheet, RefusedLocks, ::testing::Bool());

TEST_F(ObjectMove, SelectionWithoutACentreTurnsAboutTheOrigin) {
  start();
  ASSERT_TRUE(host::select({0x10}));
  orderHost("AcDbEntity::getGeomExtents", Misbehaviour::kFail);
  AcGePoint3d expected(1, 1, 0);
  expected.rotateBy(0.2, {0, 0, 1});
  movement({0, 0, 0, 0, 0, 100});
  expectNear(pointOf(0x10), expected);
}

class ObjectFaults : public ObjectMove, public ::testing::WithParamInterface<const char*> {};

TEST_P(ObjectFaults, ObjectFaultFallsBackToTheViewAndLeaksNothing) {
  start();
  ASSERT_TRUE(host::select({0x12}));
  orderHost(GetParam(), Misbehaviour::kThrow);
  movement({10, 0, 0, 0, 0, 0});
  EXPECT_THAT(errors(), ElementsAre("Error transformSelection()"));
  expectNothingHeld();
  const AcGePoint3d before = pointOf(0x12);
  movement({10, 0, 0, 0, 0, 0});
  EXPECT_NE(pointOf(0x12).x, before.x);
}

INSTANTIATE_TEST_SUITE_P(Operations, ObjectFaults,
                         ::testing::Values("acedSSGet", "AcApDocManager::curDocument",
                                           "AcApDocManager::lockDocument", "AcDbEntity::transformBy",
                                           "acedSSFree"));

TEST_F(ObjectMove, NameThatCannotBeHadSkipsTheEntity) {
  startOnTheSheet();
  ASSERT_TRUE(host::select({0x11, 0x12}));
  orderHost("acedSSName", Misbehaviour::kFail);
  movement({100, 0, 0, 0, 0, 0});
  expectNear(pointOf(0x11), {-5, -5, 0});
  EXPECT_NEAR(pointOf(0x12).x, 9.005, 1e-12);
}

TEST_F(ObjectMove, SelectionOnTheSheetFollowsTheCap) {
  startOnTheSheet();
  ASSERT_TRUE(host::select({0x12}));
  movement({100, -200, 500, 500, 500, 500});
  expectNear(pointOf(0x12), {9.005, -0.01, 0});
  EXPECT_EQ(host::faults().calls("acedRedraw"), 1u);
  EXPECT_EQ(host::callRecord().redrawMode, 1);
  EXPECT_THAT(mHost.mPaper, IsEmpty());
  expectNothingHeld();
}

TEST_F(ObjectMove, SheetPansWhenNothingIsSelected) {
  startOnTheSheet();
  movement({100, 0, 0, 0, 0, 0});
  EXPECT_EQ(mHost.mPaper.size(), 1u);
}

TEST_F(ObjectMove, FailureOnTheSheetSharesTheText) {
  startOnTheSheet();
  ASSERT_TRUE(host::select({0x12}));
  orderHost("acedRedraw", Misbehaviour::kThrow);
  movement({100, 0, 0, 0, 0, 0});
  EXPECT_THAT(errors(), ElementsAre("Error transformSelection()"));
  expectNothingHeld();
}

}  // namespace
