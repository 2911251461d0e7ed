#include "tests/module/module_fixture.h"

// clang-format off
#include "acedads.h"
#include "adscodes.h"
// clang-format on

#include <gmock/gmock.h>

namespace host = standin::host;
using standin::Misbehaviour;
using ::testing::ElementsAre;

namespace {

class ViewParams : public ModuleTest {
 protected:
  void SetUp() override {
    load();
    host::setCamera(2, {{0, 0, 10}, {0, 0, 0}, {0, 2, 0}, 4, 3, false});
  }
  void orderHost(const char* operation, Misbehaviour kind, bool isOnce = true) {
    ASSERT_TRUE(host::faults().inject(operation, {kind, 1, isOnce})) << operation;
  }
  std::vector<std::string> errors() const { return logTexts("ERR"); }
  AcGsView* view() {
    AcGsView* viewP = nullptr;
    int number = 0;
    proxy().retrieveViewParams(&viewP, &number);
    return viewP;
  }
  void addBoxAt(std::uint64_t handle, double x, double y, double z) {
    host::drawing()->add(standin::makeLine({handle, "0", 256}, {x - 1, y - 2, z - 3}, {x + 1, y + 2, z + 3}));
  }
  /// As after the first pass of a movement.
  void beginMovement() {
    deflect({10, 0, 0, 0, 0, 0});
    proxy().handleDeviceCap();
    ASSERT_TRUE(proxy().isCapMoving());
  }
};

TEST_F(ViewParams, CurrentViewAndViewportAreFound) {
  AcGsView* viewP = nullptr;
  int number = 0;
  EXPECT_EQ(proxy().retrieveViewParams(&viewP, &number), 2);
  EXPECT_EQ(number, 2);
  ASSERT_NE(viewP, nullptr);
  EXPECT_EQ(viewP->position().z, 10.0);
}

TEST_F(ViewParams, FailedVariableIsLoggedWithItsCodeAndKeepsTheNumber) {
  AcGsView* viewP = view();
  orderHost("acedGetVar", Misbehaviour::kFail);
  int number = 0;
  EXPECT_EQ(proxy().retrieveViewParams(&viewP, &number), 2);
  EXPECT_EQ(viewP, nullptr);
  EXPECT_THAT(errors(), ElementsAre("System variable 'CVPORT'could not be retrieved! rc = -5001"));
}

TEST_F(ViewParams, MissingViewIsLogged) {
  orderHost("acgsGetGsView", Misbehaviour::kFail);
  EXPECT_EQ(view(), nullptr);
  EXPECT_THAT(errors(), ElementsAre("AcGsView object could not be retrieved!"));
}

TEST_F(ViewParams, HostThatThrowsMeansNoView) {
  orderHost("acgsGetGsView", Misbehaviour::kThrow);
  EXPECT_EQ(view(), nullptr);
  EXPECT_THAT(errors(), ElementsAre("Error retrieveViewParams()"));
}

TEST_F(ViewParams, ScreenAxesOfAPlanViewPointLeftUpAndOut) {
  AcGeVector3d x, y, z;
  ASSERT_TRUE(proxy().calcScreenAxesRelativeToObject(view(), &x, &y, &z));
  EXPECT_THAT((std::vector<double>{x.x, x.y, x.z}), ElementsAre(-1, 0, 0));
  EXPECT_THAT((std::vector<double>{y.x, y.y, y.z}), ElementsAre(0, 1, 0));
  EXPECT_THAT((std::vector<double>{z.x, z.y, z.z}), ElementsAre(0, 0, 1));
}

TEST_F(ViewParams, UpVectorIsTakenAsTheHostKeepsIt) {
  host::setCamera(2, {{0, 0, 10}, {0, 0, 0}, {0, 3, 4}, 4, 3, false});
  AcGeVector3d x, y, z;
  ASSERT_TRUE(proxy().calcScreenAxesRelativeToObject(view(), &x, &y, &z));
  EXPECT_DOUBLE_EQ(y.y, 0.6);
  EXPECT_DOUBLE_EQ(y.z, 0.8);
  EXPECT_DOUBLE_EQ(x.x, -1.0);
}

class AxesFail : public ViewParams, public ::testing::WithParamInterface<const char*> {};

TEST_P(AxesFail, ScreenAxesFailWhenTheViewThrows) {
  AcGsView* const viewP = view();
  orderHost(GetParam(), Misbehaviour::kThrow);
  AcGeVector3d x, y, z;
  EXPECT_FALSE(proxy().calcScreenAxesRelativeToObject(viewP, &x, &y, &z));
  EXPECT_THAT(errors(), ElementsAre("Error calcScreenAxesRelativeToObject()"));
}

INSTANTIATE_TEST_SUITE_P(Operations, AxesFail,
                         ::testing::Values("AcGsView::position", "AcGsView::target", "AcGsView::upVector"));

TEST_F(ViewParams, SelectionCentreIsTheMeanOfTheBoxesCentres) {
  addBoxAt(0x20, 0, 0, 0);
  addBoxAt(0x21, 0, 0, 0);
  addBoxAt(0x22, 9, 0, 0);
  ASSERT_TRUE(host::select({0x20, 0x21, 0x22}));
  AcGePoint3d centre;
  ASSERT_TRUE(proxy().getSelObjectsCenter(nullptr, &centre));
  EXPECT_THAT((std::vector<double>{centre.x, centre.y, centre.z}), ElementsAre(3, 0, 0));
  EXPECT_THAT(logTexts("TMP"), ElementsAre("selCenterPoint: 3, 0, 0"));
  EXPECT_EQ(host::counts().selectionSetsAlive, 0u);
  EXPECT_EQ(host::counts().openObjects, 0u);
}

TEST_F(ViewParams, NothingSelectedMeansNoCentreAndNoLogLine) {
  AcGePoint3d centre;
  EXPECT_FALSE(proxy().getSelObjectsCenter(nullptr, &centre));
  AcGeVector3d direction;
  EXPECT_FALSE(proxy().getSelObjectAxis(&direction, &centre));
  EXPECT_TRUE(errors().empty());
  EXPECT_TRUE(logTexts("TMP").empty());
}

TEST_F(ViewParams, OneSelectedLineIsTheAxis) {
  ASSERT_TRUE(host::select({0x10}));
  AcGeVector3d direction;
  AcGePoint3d point;
  ASSERT_TRUE(proxy().getSelObjectAxis(&direction, &point));
  EXPECT_THAT((std::vector<double>{direction.x, direction.y, direction.z}), ElementsAre(0, 0, 1));
  EXPECT_THAT((std::vector<double>{point.x, point.y, point.z}), ElementsAre(1, 1, 0));
  EXPECT_EQ(host::counts().selectionSetsAlive, 0u);
  EXPECT_EQ(host::counts().openObjects, 0u);
}

class NoAxis : public ViewParams, public ::testing::WithParamInterface<std::vector<std::uint64_t>> {};

TEST_P(NoAxis, AnythingButOneLineGivesNoAxis) {
  host::drawing()->add(standin::makeLine({0x30, "0", 256}, {1, 2, 3}, {1, 2, 3}));
  host::drawing()->add(standin::makeLine({0x31, "0", 256}, {0, 0, 0}, {0, 0, 1e-11}));
  ASSERT_TRUE(host::select(GetParam()));
  AcGeVector3d direction;
  AcGePoint3d point;
  EXPECT_FALSE(proxy().getSelObjectAxis(&direction, &point));
  EXPECT_TRUE(errors().empty());
  EXPECT_EQ(host::counts().selectionSetsAlive, 0u);
  EXPECT_EQ(host::counts().openObjects, 0u);
}

INSTANTIATE_TEST_SUITE_P(TwoLinesOneCircleLinesTooShort, NoAxis,
                         ::testing::Values(std::vector<std::uint64_t>{0x10, 0x11},
                                           std::vector<std::uint64_t>{0x12}, std::vector<std::uint64_t>{0x30},
                                           std::vector<std::uint64_t>{0x31}));

TEST_F(ViewParams, SelectionMadeInAMovementCountsFromTheNextOne) {
  beginMovement();
  ASSERT_TRUE(host::select({0x10}));
  AcGeVector3d direction;
  AcGePoint3d point;
  EXPECT_FALSE(proxy().getSelObjectAxis(&direction, &point));
  EXPECT_FALSE(proxy().getSelObjectsCenter(nullptr, &point));
  proxy().handleCapIsReleased(k3DMode);
  EXPECT_TRUE(proxy().getSelObjectAxis(&direction, &point));
  EXPECT_TRUE(proxy().getSelObjectsCenter(nullptr, &point));
}

TEST_F(ViewParams, SelectionGivenUpInAMovementStaysInForceUntilTheNextOne) {
  ASSERT_TRUE(host::select({0x10}));
  AcGePoint3d point;
  ASSERT_TRUE(proxy().getSelObjectsCenter(nullptr, &point));
  beginMovement();
  host::selectNone();
  EXPECT_TRUE(proxy().getSelObjectsCenter(nullptr, &point));
  proxy().handleCapIsReleased(k3DMode);
  EXPECT_FALSE(proxy().getSelObjectsCenter(nullptr, &point));
}

TEST_F(ViewParams, CentreOfAGivenSetIsReadInAMovementTooAndLeavesTheSet) {
  ASSERT_TRUE(host::select({0x10}));
  beginMovement();
  ads_name set{};
  ASSERT_EQ(acedSSGet(L"I", nullptr, nullptr, nullptr, set), RTNORM);
  AcGePoint3d centre;
  EXPECT_TRUE(proxy().getSelObjectsCenter(set, &centre));
  EXPECT_EQ(centre.z, 2.5);
  EXPECT_EQ(acedSSFree(set), RTNORM);
}

struct SelectionFault {
  const char* operation;
  Misbehaviour kind;
  bool isLogged;
};

class SelectionFaults : public ViewParams, public ::testing::WithParamInterface<SelectionFault> {};

TEST_P(SelectionFaults, SelectionFaultMeansNoCentreAndLeaksNothing) {
  ASSERT_TRUE(host::select({0x10}));
  orderHost(GetParam().operation, GetParam().kind);
  AcGePoint3d centre;
  EXPECT_FALSE(proxy().getSelObjectsCenter(nullptr, &centre));
  EXPECT_EQ(errors(), GetParam().isLogged ? std::vector<std::string>{"Error getSelObjectsCenter()"}
                                          : std::vector<std::string>{});
  EXPECT_EQ(host::counts().selectionSetsAlive, 0u);
  EXPECT_EQ(host::counts().openObjects, 0u);
  EXPECT_TRUE(proxy().getSelObjectsCenter(nullptr, &centre)) << "the next query works";
}

INSTANTIATE_TEST_SUITE_P(
    Operations, SelectionFaults,
    ::testing::Values(SelectionFault{"acedSSGet", Misbehaviour::kFail, false},
                      SelectionFault{"acedSSGet", Misbehaviour::kThrow, true},
                      SelectionFault{"acedSSLength", Misbehaviour::kFail, true},
                      SelectionFault{"acedSSLength", Misbehaviour::kThrow, true},
                      SelectionFault{"acedSSName", Misbehaviour::kFail, false},
                      SelectionFault{"acedSSName", Misbehaviour::kThrow, true},
                      SelectionFault{"acdbGetObjectId", Misbehaviour::kFail, true},
                      SelectionFault{"acdbGetObjectId", Misbehaviour::kThrow, true},
                      SelectionFault{"acdbOpenAcDbEntity", Misbehaviour::kFail, true},
                      SelectionFault{"acdbOpenAcDbEntity", Misbehaviour::kThrow, true},
                      SelectionFault{"AcDbEntity::getGeomExtents", Misbehaviour::kFail, true},
                      SelectionFault{"AcDbEntity::getGeomExtents", Misbehaviour::kThrow, true},
                      SelectionFault{"AcDbObject::close", Misbehaviour::kThrow, true},
                      SelectionFault{"acedSSFree", Misbehaviour::kThrow, true}));

class AxisFaults : public ViewParams, public ::testing::WithParamInterface<SelectionFault> {};

TEST_P(AxisFaults, AxisFaultSharesTheTextOfTheCentreAndLeaksNothing) {
  ASSERT_TRUE(host::select({0x10}));
  orderHost(GetParam().operation, GetParam().kind);
  AcGeVector3d direction;
  AcGePoint3d point;
  EXPECT_FALSE(proxy().getSelObjectAxis(&direction, &point));
  EXPECT_EQ(errors(), GetParam().isLogged ? std::vector<std::string>{"Error getSelObjectsCenter()"}
                                          : std::vector<std::string>{});
  EXPECT_EQ(host::counts().selectionSetsAlive, 0u);
  EXPECT_EQ(host::counts().openObjects, 0u);
  EXPECT_TRUE(proxy().getSelObjectAxis(&direction, &point)) << "the next query works";
}

INSTANTIATE_TEST_SUITE_P(
    Operations, AxisFaults,
    ::testing::Values(SelectionFault{"acedSSGet", Misbehaviour::kFail, false},
                      SelectionFault{"acedSSGet", Misbehaviour::kThrow, true},
                      SelectionFault{"acedSSLength", Misbehaviour::kFail, true},
                      SelectionFault{"acedSSName", Misbehaviour::kFail, false},
                      SelectionFault{"acdbOpenAcDbEntity", Misbehaviour::kFail, true},
                      SelectionFault{"AcDbLine::getStartPoint", Misbehaviour::kFail, true},
                      SelectionFault{"AcDbLine::getEndPoint", Misbehaviour::kThrow, true},
                      SelectionFault{"AcDbObject::close", Misbehaviour::kThrow, true},
                      SelectionFault{"acedSSFree", Misbehaviour::kThrow, true}));

class RefusedOnce : public ViewParams, public ::testing::WithParamInterface<const char*> {};

TEST_P(RefusedOnce, CallRefusedOnceIsRepeatedAndLeaksNothing) {
  ASSERT_TRUE(host::select({0x10}));
  orderHost(GetParam(), Misbehaviour::kFail);
  AcGePoint3d centre;
  EXPECT_TRUE(proxy().getSelObjectsCenter(nullptr, &centre));
  EXPECT_EQ(host::counts().selectionSetsAlive, 0u);
  EXPECT_EQ(host::counts().openObjects, 0u);
}

INSTANTIATE_TEST_SUITE_P(Operations, RefusedOnce, ::testing::Values("acedSSFree", "AcDbObject::close"));

}  // namespace
