// Motions whose result depends on every coordinate and on the kind of projection.
#include "common_sources/current_document.h"
#include "common_sources/document_lock.h"
#include "common_sources/paper_view.h"
#include "common_sources/selected_objects.h"
#include "common_sources/window_search.h"
#include "standin_desktop.h"
#include "standin_win32_faults.h"
#include "tests/module/module_fixture.h"

#include "acdocman.h"

#include <gmock/gmock.h>

#include <cmath>
#include <memory>

namespace controller = standin::controller;
namespace desktop = standin::desktop;
namespace host = standin::host;
using ::testing::IsEmpty;

namespace {

class MotionEdges : public ModuleTest {
 protected:
  void movement(std::array<std::int16_t, 6> cap) {
    deflect(cap);
    proxy().handleDeviceCap();
    deflect({});
    proxy().handleDeviceCap();
  }
};

TEST_F(MotionEdges, CentreOfSeveralObjectsIsTheMeanInAllDirections) {
  load();
  ASSERT_TRUE(host::select({0x10, 0x11, 0x12}));
  const std::optional<AcGePoint3d> centre = meanOfSelectedBoxCentres();
  ASSERT_TRUE(centre.has_value());
  EXPECT_NEAR(centre->x, 10.0 / 3, 1e-12);
  EXPECT_NEAR(centre->y, 1.0 / 3, 1e-12);
  EXPECT_NEAR(centre->z, 2.5 / 3, 1e-12);
}

TEST_F(MotionEdges, NothingSelectedHasNeitherCentreNorAxis) {
  load();
  EXPECT_FALSE(meanOfSelectedBoxCentres().has_value());
  EXPECT_FALSE(axisOfSelectedLine().has_value());
}

TEST_F(MotionEdges, SelectedCircleIsNoAxis) {
  load();
  ASSERT_TRUE(host::select({0x12}));
  EXPECT_FALSE(axisOfSelectedLine().has_value());
  EXPECT_EQ(host::counts().openObjects, 0u);
}

TEST_F(MotionEdges, MovementKeepsTheProjection) {
  for (const bool isPerspective : {false, true}) {
    load();
    ASSERT_TRUE(host::setCamera(2, {{2, 3, 10}, {2, 3, 0}, {0, 1, 0}, 4, 9, isPerspective}));
    movement({100, 0, 0, 200, 0, 0});
    ASSERT_TRUE(host::camera(2).has_value());
    EXPECT_EQ(host::camera(2)->isPerspective, isPerspective);
    EXPECT_EQ(host::committedCamera(2)->isPerspective, isPerspective);
    unload();
    restart();
  }
}

TEST_F(MotionEdges, TileThatTakesOverFromASheetIsPannedInBothDirections) {
  writeSettings({{"transSensBase", "100"}});
  load();
  ASSERT_TRUE(host::setVariable(L"TILEMODE", L"0"));
  ASSERT_TRUE(host::setVariable(L"CVPORT", L"1"));
  ASSERT_TRUE(host::setVariable(L"TILEMODE", L"1"));
  const double width = host::camera(2)->fieldWidth;
  const double height = host::camera(2)->fieldHeight;
  mHost.mPaper.clear();
  proxy().handleCapIsDeflectedIn2DMode(10, 20, 0);
  proxy().handleCapIsDeflectedIn2DMode(10, 20, 0);
  ASSERT_EQ(mHost.mPaper.size(), 2u);
  EXPECT_NEAR(mHost.mPaper[1].centerX, mHost.mPaper[0].centerX - 0.1 * width, 1e-9 * width);
  EXPECT_NEAR(mHost.mPaper[1].centerY, mHost.mPaper[0].centerY - 0.2 * height, 1e-9 * height);
}

TEST_F(MotionEdges, ZoomAndPanThatSucceedLogNoError) {
  load();
  proxy().handleCapIsDeflectedIn2DMode(10, 20, 30);
  ASSERT_TRUE(host::setVariable(L"TILEMODE", L"0"));
  ASSERT_TRUE(host::setVariable(L"CVPORT", L"1"));
  proxy().handleCapIsDeflectedIn2DMode(10, 20, 30);
  EXPECT_THAT(logTexts("ERR"), IsEmpty());
}

TEST_F(MotionEdges, SmallestDeflectionOfAnyAxisMovesTheView) {
  load();
  for (std::size_t axis = 0; axis < 6; ++axis) {
    ASSERT_TRUE(host::setCamera(2, {{2, 3, 10}, {2, 3, 0}, {0.6, 0.8, 0}, 4, 9, false}));
    std::array<std::int16_t, 6> cap{};
    cap[axis] = 1;
    movement(cap);
    const host::Camera camera = *host::camera(2);
    const bool isMoved = camera.position.x != 2 || camera.position.y != 3 || camera.position.z != 10 ||
                         camera.up.x != 0.6 || camera.up.y != 0.8 || camera.fieldWidth != 4;
    EXPECT_TRUE(isMoved) << axis;
  }
}

TEST_F(MotionEdges, PerspectiveCameraThatDoesNotHoverChangesItsElevation) {
  load();
  ASSERT_TRUE(host::setCamera(2, {{0, -10, 0}, {0, 0, 0}, {0, 0, 1}, 4, 9, true}));
  movement({0, 100, 0, 0, 0, 0});
  EXPECT_NE(host::camera(2)->position.z, 0.0);
}

TEST_F(MotionEdges, LevelHorizonLeavesTheTiltAboutTheScreensXAxis) {
  controller::setAdvancedSettings(10, 0);
  load();
  ASSERT_TRUE(host::setCamera(2, {{0, -10, 0}, {0, 0, 0}, {0, 0, 1}, 4, 9, false}));
  movement({0, 0, 0, 1000, 0, 0});
  EXPECT_NEAR(host::camera(2)->position.x, 0.0, 1e-12);
  EXPECT_GT(std::abs(host::camera(2)->position.z), 0.1);
}

TEST_F(MotionEdges, ModelTabIsNoSheetWhateverItsViewport) {
  load();
  host::setVariable(L"CVPORT", L"1");
  EXPECT_EQ(proxy().getNavigationMode(), k3DMode);
}

TEST_F(MotionEdges, UnloadLogsAnUnlockThatThrows) {
  load();
  ASSERT_TRUE(host::setVariable(L"TILEMODE", L"0"));
  ASSERT_TRUE(host::setVariable(L"CVPORT", L"1"));
  deflect({100, 0, 0, 0, 0, 0});
  proxy().handleDeviceCap();
  ASSERT_TRUE(
      host::faults().inject("AcApDocManager::unlockDocument", {standin::Misbehaviour::kThrow, 1, true}));
  unload();
  EXPECT_THAT(logTexts("ERR", "~AutoCadProxy"), testing::ElementsAre("Error unlockDocument()"));
}

TEST_F(MotionEdges, UnknownKeyOfTheSmallestCodeIsReportedOnce) {
  load();
  mCoreP->specialApplFuncSlot().set(1);
  proxy().handleDeviceKeys();
  proxy().handleDeviceKeys();
  EXPECT_THAT(logTexts("ERR"), testing::ElementsAre("Unknown special command '1' found!"));
}

TEST_F(MotionEdges, ZoomAfterAViewDoesNotActivateTheCommandLine) {
  controller::setAdvancedSettings(0, 1);
  load();
  mHost = {};
  deviceEvent(0x2000B);
  idle(250);
  ASSERT_EQ(mHost.mSent.size(), 2u);
  EXPECT_FALSE(mHost.mIsActivating[0]);
  EXPECT_FALSE(mHost.mIsActivating[1]);
}

TEST_F(MotionEdges, ReleaseWithoutALockUnlocksNothing) {
  load();
  movement({100, 0, 0, 0, 0, 0});
  EXPECT_EQ(host::faults().calls("AcApDocManager::unlockDocument"), 0u);
}

TEST_F(MotionEdges, AnyDocumentCountsAsCurrentWhileThereIsNone) {
  load();
  AcApDocument* const documentP = acDocManagerPtr()->curDocument();
  EXPECT_TRUE(isCurrentDocument(documentP));
  EXPECT_FALSE(isCurrentDocument(nullptr));
  EXPECT_EQ(sendText(nullptr, L"x", Activate::kNo), Acad::eNoDocument);
  host::closeDocument();
  EXPECT_TRUE(isCurrentDocument(documentP));
  EXPECT_FALSE(DocumentLock().lock());
}

TEST_F(MotionEdges, MovementOutlivesADocumentThatIsNeitherLockedNorCurrent) {
  load();
  AcApDocument* const firstP = acDocManagerPtr()->curDocument();
  ASSERT_TRUE(host::openDocument(std::make_unique<standin::Drawing>(), L"second.dwg"));
  ASSERT_TRUE(host::setVariable(L"TILEMODE", L"0"));
  ASSERT_TRUE(host::setVariable(L"CVPORT", L"1"));
  deflect({100, 0, 0, 0, 0, 0});
  proxy().handleDeviceCap();
  proxy().documentToBeDestroyed(firstP);
  EXPECT_TRUE(proxy().isCapMoving());
  EXPECT_TRUE(proxy().isDocLocked());
  AcApDocument* const secondP = acDocManagerPtr()->curDocument();
  host::switchDocument(L"Drawing1.dwg");
  proxy().documentToBeDestroyed(secondP);
  EXPECT_FALSE(proxy().isCapMoving()) << "the locked one, although another is current";
  EXPECT_FALSE(proxy().isDocLocked());
}

TEST_F(MotionEdges, CapScrollsInTheDirectionOfItsStrongerPush) {
  const desktop::StandardDesktop windows = desktop::makeStandardDesktop();
  load();
  ASSERT_TRUE(desktop::pointAt("edit"));
  deflect({200, 50, 0, 0, 0, 0});
  EXPECT_TRUE(proxy().handleDeviceCap());
  EXPECT_EQ(desktop::scrollBar(windows.edit, SB_HORZ)->position, 3);
  EXPECT_EQ(desktop::scrollBar(windows.edit, SB_VERT)->position, 0);
  desktop::clear();
}

TEST_F(MotionEdges, WheelIsTurnedWithoutAnyKeyHeld) {
  desktop::makeStandardDesktop();
  load();
  ASSERT_TRUE(desktop::pointAt("qt"));
  EXPECT_TRUE(proxy().scrollTreeOrList(0, 0, 100));
  ASSERT_EQ(desktop::sentMessages().size(), 1u);
  EXPECT_EQ(LOWORD(desktop::sentMessages()[0].wParam), 0);
  desktop::clear();
}

TEST_F(MotionEdges, PointerThatCannotBeReadScrollsNothing) {
  desktop::makeStandardDesktop();
  load();
  ASSERT_TRUE(desktop::pointAt("tree"));
  ASSERT_TRUE(standin::windows::faults().inject("GetCursorPos", {standin::Misbehaviour::kFail, 1, true}));
  EXPECT_FALSE(proxy().scrollTreeOrList(0, 0, 100));
  standin::windows::faults().clear();
  desktop::clear();
}

class WindowSizes : public ::testing::Test {
 protected:
  WindowSizes() { desktop::clear(); }
  ~WindowSizes() override { desktop::clear(); }
  static HWND window(HWND parent, RECT rect) {
    return desktop::createWindow({L"W", parent, rect, true, {}, {}, false});
  }
};

TEST_F(WindowSizes, SizeOfAWindowDoesNotDependOnItsPlace) {
  const HWND frame = window(nullptr, {0, 0, 1000, 1000});
  window(frame, {0, 0, 100, 100});
  const HWND right = window(frame, {90, 0, 99, 100});
  EXPECT_EQ(smallestWindowAt({95, 50}), right);
  const HWND bottom = window(frame, {0, 90, 100, 99});
  EXPECT_EQ(smallestWindowAt({50, 95}), bottom);
}

}  // namespace
