#include "host_fixture.h"

// clang-format off
#include "acedads.h"
#include "gs.h"
#include "acgs.h"
// clang-format on

#include <cmath>

namespace {

using namespace standin;
using Views = HostTest;

TEST_F(Views, ModelTabHasOneTileOfNumberTwo) {
  EXPECT_EQ(host::currentViewport(), 2);
  EXPECT_NE(acgsGetGsView(2, true), nullptr);
  EXPECT_EQ(acgsGetGsView(1, true), nullptr);
  EXPECT_EQ(acgsGetGsView(3, true), nullptr);
  EXPECT_FALSE(host::camera(1).has_value());
}

TEST_F(Views, LayoutHasThePaperAndOneFloatingViewport) {
  ASSERT_TRUE(host::setVariable(L"TILEMODE", L"0"));
  EXPECT_EQ(host::currentViewport(), 1);
  EXPECT_NE(acgsGetGsView(1, true), nullptr);
  EXPECT_NE(acgsGetGsView(2, true), nullptr);
  EXPECT_EQ(acgsGetGsView(3, true), nullptr);
  EXPECT_TRUE(host::setVariable(L"cvport", L"2"));
  EXPECT_EQ(host::currentViewport(), 2);
  EXPECT_FALSE(host::setVariable(L"CVPORT", L"3"));
}

TEST_F(Views, NoDocumentMeansNoView) {
  host::closeDocument();
  EXPECT_EQ(acgsGetGsView(2, true), nullptr);
}

TEST_F(Views, ViewKeepsTheUpVectorAsGiven) {
  AcGsView* viewP = acgsGetGsView(2, true);
  viewP->setView({1, 2, 30}, {1, 2, 3}, {0, 5, 5}, 8, 4, AcGsView::kPerspective);
  expectPoint(viewP->position(), 1, 2, 30);
  expectPoint(viewP->target(), 1, 2, 3);
  EXPECT_EQ(viewP->upVector().y, 5);
  EXPECT_EQ(viewP->upVector().z, 5);
  EXPECT_EQ(viewP->fieldWidth(), 8);
  EXPECT_EQ(viewP->fieldHeight(), 4);
  EXPECT_TRUE(viewP->isPerspective());
}

TEST_F(Views, ZoomDividesTheField) {
  AcGsView* viewP = acgsGetGsView(2, true);
  viewP->setView({0, 0, 1}, {0, 0, 0}, {0, 1, 0}, 8, 4);
  viewP->zoom(0.5);
  EXPECT_EQ(viewP->fieldWidth(), 16);
  EXPECT_EQ(viewP->fieldHeight(), 8);
}

TEST_F(Views, ViewThatShowsNothingBreaksARuleAndIsIgnored) {
  AcGsView* viewP = acgsGetGsView(2, true);
  const double width = viewP->fieldWidth();
  viewP->setView({0, 0, 0}, {0, 0, 0}, {0, 1, 0}, 8, 4);
  viewP->setView({0, 0, 1}, {0, 0, 0}, {0, 1, 0}, 0, 4);
  viewP->zoom(0);
  EXPECT_EQ(viewP->fieldWidth(), width);
  EXPECT_EQ(breaches(),
            (std::vector<std::string>{"AcGsView::setView: called with a view that shows nothing",
                                      "AcGsView::setView: called with a view that shows nothing",
                                      "AcGsView::zoom: called with a factor that leaves no field"}));
}

TEST_F(Views, UpdateReportsThenDraws) {
  int drawnWhenTold = -1;
  struct Order : host::Listener {
    void viewUpdated(int, const host::Camera&) override { *mSeenP = *mDrawnP; }
    int* mSeenP = nullptr;
    int* mDrawnP = nullptr;
  } order;
  order.mSeenP = &drawnWhenTold;
  order.mDrawnP = &mDrawnCount;
  host::setListener(&order);
  acgsGetGsView(2, true)->update();
  EXPECT_EQ(drawnWhenTold, 0);
  EXPECT_EQ(mDrawnCount, 1);
  EXPECT_EQ(host::counts().updates, 1u);
}

TEST_F(Views, CommitStoresTheChangedView) {
  const double before = host::camera(2)->fieldWidth;
  AcGsView* viewP = acgsGetGsView(2, true);
  viewP->zoom(2);
  EXPECT_EQ(host::camera(2)->fieldWidth, before / 2);
  EXPECT_EQ(host::committedCamera(2)->fieldWidth, before);
  EXPECT_TRUE(acgsSetViewParameters(2, viewP, true, true, false));
  EXPECT_EQ(host::committedCamera(2)->fieldWidth, before / 2);
  ASSERT_EQ(mHost.mCommits.size(), 1u);
  EXPECT_EQ(mHost.mCommits[0].fieldWidth, before / 2);
  EXPECT_EQ(host::counts().commits, 1u);
}

TEST_F(Views, SwitchingTabsDropsAnUncommittedView) {
  const double before = host::camera(2)->fieldWidth;
  acgsGetGsView(2, true)->zoom(2);
  host::setVariable(L"TILEMODE", L"0");
  host::setVariable(L"TILEMODE", L"1");
  EXPECT_EQ(host::camera(2)->fieldWidth, before);
}

TEST_F(Views, CommitNeedsAViewportAndAView) {
  AcGsView* viewP = acgsGetGsView(2, true);
  EXPECT_FALSE(acgsSetViewParameters(7, viewP, true, true));
  EXPECT_FALSE(acgsSetViewParameters(2, nullptr, true, true));
  host::setViewValid(false);
  EXPECT_FALSE(viewP->isValid());
  EXPECT_FALSE(acgsSetViewParameters(2, viewP, true, true));
  EXPECT_EQ(breaches(),
            std::vector<std::string>{"acgsSetViewParameters: called with a view that is not valid"});
  EXPECT_EQ(host::counts().commits, 0u);
}

TEST_F(Views, ViewOfTheOtherTabIsNotValid) {
  AcGsView* viewP = acgsGetGsView(2, true);
  EXPECT_TRUE(viewP->isValid());
  host::setVariable(L"TILEMODE", L"0");
  EXPECT_FALSE(viewP->isValid());
}

TEST_F(Views, DrawingOpensInAPlanViewOfItsExtents) {
  const host::Camera camera = *host::camera(2);
  expectPoint(camera.target, 5, 4, 2);
  EXPECT_EQ(camera.position.x, 5);
  EXPECT_EQ(camera.position.y, 4);
  EXPECT_GT(camera.position.z, 2);
  EXPECT_NEAR(camera.fieldHeight, 8 * 1.05, 1e-9);
  EXPECT_NEAR(camera.fieldWidth, 1.6 * camera.fieldHeight, 1e-9);
}

TEST_F(Views, DrawingOpensInItsStoredView) {
  auto drawing = std::make_unique<Drawing>();
  Drawing::View view;
  view.target = {1, 2, 3};
  view.direction = {0, -10, 0};
  view.centerX = 4;
  view.centerY = 5;
  view.height = 6;
  view.aspect = 2;
  drawing->mView = view;
  host::openDocument(std::move(drawing));
  const host::Camera camera = *host::camera(2);
  expectPoint(camera.target, 5, 2, 8);
  expectPoint(camera.position, 5, -8, 8);
  EXPECT_NEAR(camera.up.z, 1, 1e-12);
  EXPECT_EQ(camera.fieldWidth, 12);
  EXPECT_EQ(camera.fieldHeight, 6);
}

TEST_F(Views, TwistTurnsThePictureCounterClockwise) {
  auto drawing = std::make_unique<Drawing>();
  Drawing::View view;
  view.twist = std::acos(0.0);
  view.centerX = 1;
  drawing->mView = view;
  host::openDocument(std::move(drawing));
  // The world's X axis points up on the screen.
  EXPECT_NEAR(host::camera(2)->up.x, 1, 1e-12);
  expectPoint(host::camera(2)->target, 0, -1, 0);
}

TEST_F(Views, VariablesAreReadInAnyCase) {
  resbuf result{};
  EXPECT_EQ(acedGetVar(L"TileMode", &result), RTNORM);
  EXPECT_EQ(result.restype, RTSHORT);
  EXPECT_EQ(result.resval.rint, 1);
  EXPECT_EQ(acedGetVar(L"cvport", &result), RTNORM);
  EXPECT_EQ(result.resval.rint, 2);
  EXPECT_EQ(acedGetVar(L"NOSUCH", &result), RTERROR);
  EXPECT_EQ(result.resval.rint, 2);
}

TEST_F(Views, VariablesTakeTheirOwnValuesOnly) {
  EXPECT_FALSE(host::setVariable(L"TILEMODE", L"2"));
  EXPECT_FALSE(host::setVariable(L"TILEMODE", L"x"));
  EXPECT_FALSE(host::setVariable(L"NOSUCH", L"1"));
  EXPECT_FALSE(host::setVariable(L"CVPORT", L"1"));
  EXPECT_FALSE(host::setVariable(L"CMDACTIVE", L"1"));
  EXPECT_TRUE(mHost.mChanges.empty());
}

TEST_F(Views, SwitchingTabsReportsTheViewThatIsCurrentThen) {
  host::setVariable(L"TILEMODE", L"0");
  ASSERT_EQ(mHost.mChanges.size(), 1u);
  EXPECT_EQ(mHost.mChanges[0].viewport, 1);
  EXPECT_EQ(mHost.mChanges[0].fieldHeight, 297);
}

TEST_F(Views, PerspectiveKeepsTheFieldAtTheTarget) {
  const host::Camera before = *host::camera(2);
  host::setPerspective(true);
  const host::Camera after = *host::camera(2);
  EXPECT_TRUE(after.isPerspective);
  EXPECT_EQ(after.fieldWidth, before.fieldWidth);
  EXPECT_NEAR(after.position.z - after.target.z, before.fieldWidth * 50 / 36, 1e-9);
  ASSERT_EQ(mHost.mChanges.size(), 1u);
  host::setPerspective(false);
  EXPECT_FALSE(host::camera(2)->isPerspective);
}

TEST_F(Views, PaperHasNoPerspective) {
  host::setVariable(L"TILEMODE", L"0");
  host::setPerspective(true);
  EXPECT_FALSE(host::camera(1)->isPerspective);
  host::setVariable(L"CVPORT", L"2");
  host::setPerspective(true);
  EXPECT_TRUE(host::camera(2)->isPerspective);
}

TEST_F(Views, SetCameraStoresAndReportsTheView) {
  host::Camera camera;
  camera.fieldWidth = 3;
  EXPECT_TRUE(host::setCamera(2, camera));
  EXPECT_EQ(host::committedCamera(2)->fieldWidth, 3);
  EXPECT_EQ(mHost.mChanges.size(), 1u);
  EXPECT_FALSE(host::setCamera(9, camera));
}

}  // namespace
