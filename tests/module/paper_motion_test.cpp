#include "host/doc_data.h"
#include "tests/module/module_fixture.h"

#include <gmock/gmock.h>

namespace host = standin::host;
using standin::Misbehaviour;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class PaperMotion : public ModuleTest {
 protected:
  void start(const char* transSensBase = "100") {
    writeSettings({{"transSensBase", transSensBase}});
    load();
    ASSERT_TRUE(host::setVariable(L"TILEMODE", L"0"));
    ASSERT_TRUE(host::setVariable(L"CVPORT", L"1"));
    mHost.mPaper.clear();
  }
  void pass(short x, short y, short z) { proxy().handleCapIsDeflectedIn2DMode(x, y, z); }
  void orderHost(const char* operation, Misbehaviour kind, bool isOnce = true) {
    ASSERT_TRUE(host::faults().inject(operation, {kind, 1, isOnce})) << operation;
  }
  std::vector<std::string> errors() const { return logTexts("ERR"); }
  /// One pass of a push to the right, and the release.
  void movement() {
    deflect({10, 0, 0, 0, 0, 0});
    proxy().handleDeviceCap();
    deflect({});
    proxy().handleDeviceCap();
  }
  void expectNothingHeld() {
    EXPECT_EQ(host::counts().lockDepth, 0);
    EXPECT_EQ(host::counts().openObjects, 0u);
    EXPECT_THAT(host::counts().breaches, IsEmpty());
  }
};

TEST_F(PaperMotion, PushToTheRightMovesTheCentreToTheLeft) {
  start("300");
  const host::PaperView before = host::paperView();
  pass(150, 0, 0);
  EXPECT_NEAR(host::paperView().centerX, before.centerX - 0.5 * before.width, 1e-9 * before.width);
  EXPECT_EQ(host::paperView().centerY, before.centerY);
  EXPECT_EQ(host::paperView().height, before.height);
}

TEST_F(PaperMotion, PushUpMovesTheCentreDown) {
  start();
  const host::PaperView before = host::paperView();
  pass(0, 10, 0);
  EXPECT_NEAR(host::paperView().centerY, before.centerY - 0.1 * before.height, 1e-9 * before.height);
}

struct PaperZoom {
  short push;
  double factor;
};

class PaperZooms : public PaperMotion, public ::testing::WithParamInterface<PaperZoom> {};

TEST_P(PaperZooms, PaperZoomScalesTheHeightShown) {
  start();
  const host::PaperView before = host::paperView();
  pass(0, 0, GetParam().push);
  EXPECT_DOUBLE_EQ(host::paperView().height, before.height * GetParam().factor);
  EXPECT_EQ(host::paperView().centerX, before.centerX);
}

INSTANTIATE_TEST_SUITE_P(Pushes, PaperZooms,
                         ::testing::Values(PaperZoom{10, 0.9}, PaperZoom{-10, 1.1}, PaperZoom{50, 0.8},
                                           PaperZoom{-50, 1.2}, PaperZoom{32767, 0.8},
                                           PaperZoom{-32768, 1.2}));

TEST_F(PaperMotion, EachOperationOpensTheViewportOnlyWhenItMoves) {
  start();
  pass(10, 0, 0);
  EXPECT_EQ(mHost.mPaper.size(), 1u);
  pass(0, 0, 10);
  EXPECT_EQ(mHost.mPaper.size(), 2u);
  pass(0, 0, 0);
  EXPECT_EQ(mHost.mPaper.size(), 2u);
}

TEST_F(PaperMotion, RotationHasNoEffect) {
  start();
  deflect({0, 0, 0, 30000, -30000, 30000});
  EXPECT_TRUE(proxy().handleDeviceCap());
  EXPECT_THAT(mHost.mPaper, IsEmpty());
  EXPECT_THAT(mHost.mUpdates, IsEmpty());
}

TEST_F(PaperMotion, DocumentIsLockedFromTheFirstPassToTheRelease) {
  start();
  deflect({10, 0, 0, 0, 0, 0});
  proxy().handleDeviceCap();
  proxy().handleDeviceCap();
  EXPECT_EQ(host::counts().lockDepth, 1);
  EXPECT_EQ(host::counts().locks, 1u);
  deflect({});
  proxy().handleDeviceCap();
  EXPECT_THAT(logTexts("TRC", "handleCapIsDeflectedIn2DMode"), ElementsAre("Document locked"));
  EXPECT_THAT(logTexts("TRC", "handleCapIsReleased"), ElementsAre("Document unlocked", "Cap released."));
  expectNothingHeld();
}

TEST_F(PaperMotion, MovementThatEndsInThreeDimensionsUnlocksToo) {
  start();
  deflect({10, 0, 0, 0, 0, 0});
  proxy().handleDeviceCap();
  ASSERT_TRUE(host::setVariable(L"CVPORT", L"2"));
  proxy().handleDeviceCap();
  deflect({});
  proxy().handleDeviceCap();
  EXPECT_THAT(logTexts("TRC", "handleCapIsReleased"), ElementsAre("Cap released."));
  EXPECT_FALSE(proxy().isDocLocked());
  expectNothingHeld();
}

TEST_F(PaperMotion, MovementThatBeginsInThreeDimensionsTakesNoLock) {
  start();
  ASSERT_TRUE(host::setVariable(L"CVPORT", L"2"));
  deflect({10, 0, 0, 0, 0, 0});
  proxy().handleDeviceCap();
  ASSERT_TRUE(host::setVariable(L"CVPORT", L"1"));
  proxy().handleDeviceCap();
  deflect({});
  proxy().handleDeviceCap();
  EXPECT_EQ(host::counts().locks, 0u);
  EXPECT_THAT(logTexts("TRC", "handleCapIsReleased"), ElementsAre("Document unlocked", "Cap released."));
  expectNothingHeld();
}

TEST_F(PaperMotion, ViewportThatCannotBeOpenedIsLoggedForPanAndForZoom) {
  start();
  proxy().handleCapIsDeflectedIn2DMode(0, 0, 0);
  orderHost("acdbOpenAcDbObject", Misbehaviour::kFail, false);
  pass(10, 0, 10);
  EXPECT_THAT(errors(), ElementsAre("AcDbObjectPointer could not be retrieved!",
                                    "AcDbObjectPointer could not be retrieved!"));
}

TEST_F(PaperMotion, FailedPanDoesNotPreventTheZoom) {
  start();
  const double height = host::paperView().height;
  orderHost("acdbOpenAcDbObject", Misbehaviour::kFail);
  pass(10, 0, 10);
  EXPECT_DOUBLE_EQ(host::paperView().height, height * 0.9);
}

class PaperFaults : public PaperMotion, public ::testing::WithParamInterface<const char*> {};

TEST_P(PaperFaults, PaperFaultIsLoggedByTheHandlerAndTheNextMovementWorks) {
  start();
  orderHost(GetParam(), Misbehaviour::kThrow);
  deflect({10, 0, 10, 0, 0, 0});
  proxy().handleDeviceCap();
  EXPECT_THAT(errors(), ElementsAre("Error handleCapIsDeflectedIn2DMode()"));
  deflect({});
  proxy().handleDeviceCap();
  expectNothingHeld();
  deflect({10, 0, 10, 0, 0, 0});
  const host::PaperView before = host::paperView();
  proxy().handleDeviceCap();
  EXPECT_NE(host::paperView().centerX, before.centerX);
  deflect({});
  proxy().handleDeviceCap();
  expectNothingHeld();
}

INSTANTIATE_TEST_SUITE_P(Operations, PaperFaults,
                         ::testing::Values("AcApDocManager::lockDocument", "acedActiveViewportId",
                                           "acdbOpenAcDbObject", "AcDbViewport::viewCenter",
                                           "AcDbViewport::setViewCenter", "AcDbViewport::setViewHeight",
                                           "AcDbViewport::updateDisplay"));

TEST_F(PaperMotion, NothingIsLockedWithoutADocument) {
  start();
  orderHost("AcApDocManager::curDocument", Misbehaviour::kFail, false);
  pass(10, 0, 0);
  EXPECT_EQ(host::faults().calls("AcApDocManager::lockDocument"), 0u);
  EXPECT_FALSE(proxy().isDocLocked());
}

TEST_F(PaperMotion, RefusedLockIsNotUnlocked) {
  start();
  orderHost("AcApDocManager::lockDocument", Misbehaviour::kFail);
  deflect({10, 0, 0, 0, 0, 0});
  proxy().handleDeviceCap();
  EXPECT_FALSE(proxy().isDocLocked());
  deflect({});
  proxy().handleDeviceCap();
  expectNothingHeld();
}

TEST_F(PaperMotion, UnlockThatIsRefusedOnceIsAskedForAgain) {
  start();
  orderHost("AcApDocManager::unlockDocument", Misbehaviour::kFail);
  movement();
  EXPECT_FALSE(proxy().isDocLocked());
  expectNothingHeld();
}

TEST_F(PaperMotion, RefusedUnlockLetsTheNextMovementLockAndPan) {
  start();
  orderHost("AcApDocManager::unlockDocument", Misbehaviour::kFail, false);
  for (std::uint64_t number = 1; number <= 4; ++number) {
    const double centre = host::paperView().centerX;
    movement();
    EXPECT_FALSE(proxy().isDocLocked());
    EXPECT_EQ(host::counts().locks, number);
    EXPECT_NE(host::paperView().centerX, centre);
  }
  EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(PaperMotion, UnlockThatThrowsIsTriedAgainByTheNextRelease) {
  start();
  orderHost("AcApDocManager::unlockDocument", Misbehaviour::kThrow);
  movement();
  EXPECT_TRUE(proxy().isDocLocked());
  EXPECT_THAT(errors(), ElementsAre("Error handleCapIsReleased()"));
  movement();
  EXPECT_FALSE(proxy().isDocLocked());
  EXPECT_EQ(host::counts().locks, 1u);
  expectNothingHeld();
}

TEST_F(PaperMotion, UnloadInTheMiddleOfAMovementUnlocksTheDocument) {
  start();
  deflect({10, 0, 0, 0, 0, 0});
  proxy().handleDeviceCap();
  ASSERT_EQ(host::counts().lockDepth, 1);
  unload();
  expectNothingHeld();
}

class DocumentClosedInAMovement : public PaperMotion {
 protected:
  void SetUp() override {
    start();
    mManagerP = std::make_unique<DocDataManager>();
    deflect({10, 0, 0, 0, 0, 0});
    proxy().handleDeviceCap();
    ASSERT_TRUE(proxy().isDocLocked());
  }
  void TearDown() override { mManagerP.reset(); }
  void openAnotherSheet() {
    host::closeDocument();
    host::openDocument(std::make_unique<standin::Drawing>());
    ASSERT_TRUE(host::setVariable(L"TILEMODE", L"0"));
    ASSERT_TRUE(host::setVariable(L"CVPORT", L"1"));
  }
  std::unique_ptr<DocDataManager> mManagerP;
};

TEST_F(DocumentClosedInAMovement, ClosedDocumentTakesItsLockAlongWhenTheUnlockThrows) {
  orderHost("AcApDocManager::unlockDocument", Misbehaviour::kThrow, false);
  host::closeDocument();
  host::openDocument(std::make_unique<standin::Drawing>());
  EXPECT_FALSE(proxy().isDocLocked());
  orderHost("AcApDocManager::unlockDocument", Misbehaviour::kNone);
  deflect({});
  proxy().handleDeviceCap();
  EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(DocumentClosedInAMovement, ClosedDocumentLetsTheHeldCapMoveTheNextDocument) {
  openAnotherSheet();
  const double centre = host::paperView().centerX;
  idle(500);
  EXPECT_TRUE(proxy().isDocLocked());
  EXPECT_EQ(host::counts().locks, 2u);
  EXPECT_NE(host::paperView().centerX, centre);
  EXPECT_THAT(errors(), IsEmpty());
  deflect({});
  idle(100);
  expectNothingHeld();
}

TEST_F(DocumentClosedInAMovement, ClosedDocumentEndsTheMovementAlthoughTheHostCannotNameTheCurrentOne) {
  ASSERT_TRUE(host::setVariable(L"CVPORT", L"2"));
  orderHost("AcApDocManager::curDocument", Misbehaviour::kThrow);
  proxy().documentToBeDestroyed(nullptr);
  EXPECT_FALSE(proxy().isCapMoving());
}

TEST_F(PaperMotion, DocumentClosedInAMovementTakesItsLockAlong) {
  start();
  deflect({10, 0, 0, 0, 0, 0});
  proxy().handleDeviceCap();
  DocDataManager manager;
  host::closeDocument();
  host::openDocument(std::make_unique<standin::Drawing>());
  deflect({});
  proxy().handleDeviceCap();
  EXPECT_FALSE(proxy().isDocLocked());
  expectNothingHeld();
}

class TileMotion : public PaperMotion {
 protected:
  void SetUp() override {
    start();
    ASSERT_TRUE(host::setVariable(L"TILEMODE", L"1"));
    mHost.mPaper.clear();
  }
};

TEST_F(TileMotion, PanMovesTheTilesCentre) {
  const double width = host::camera(2)->fieldWidth;
  pass(10, 0, 0);
  ASSERT_EQ(mHost.mPaper.size(), 1u);
  const host::PaperView first = mHost.mPaper.back();
  pass(10, 0, 0);
  EXPECT_NEAR(mHost.mPaper.back().centerX, first.centerX - 0.1 * width, 1e-9 * width);
}

TEST_F(TileMotion, HostWritesItsViewportsToTheTableBeforeEachChange) {
  pass(10, 0, 0);
  EXPECT_EQ(host::faults().calls("acedVports2VportTableRecords"), 1u);
  pass(0, 0, 10);
  EXPECT_EQ(host::faults().calls("acedVports2VportTableRecords"), 2u);
}

TEST_F(TileMotion, ZoomScalesTheTilesHeight) {
  const double height = host::camera(2)->fieldHeight;
  pass(0, 0, -10);
  ASSERT_EQ(mHost.mPaper.size(), 1u);
  EXPECT_NEAR(mHost.mPaper.back().height, height * 1.1, 1e-9 * height);
}

TEST_F(TileMotion, TableRecordThatCannotBeOpenedIsLogged) {
  orderHost("acdbOpenAcDbObject", Misbehaviour::kFail, false);
  pass(10, 0, 10);
  EXPECT_THAT(errors(), ElementsAre("AcDbViewportTableRecordPointer could not be retrieved!",
                                    "AcDbViewportTableRecordPointer could not be retrieved!"));
}

}  // namespace
