#include "host_fixture.h"

// clang-format off
#include "dbents.h"
#include "dbsymtb.h"
#include "dbobjptr.h"
#include "aced.h"
#include "gs.h"
#include "acgs.h"
// clang-format on

namespace {

using namespace standin;

using Record = AcDbObjectPointer<AcDbViewportTableRecord>;
using Viewport = AcDbObjectPointer<AcDbViewport>;

class Paper : public HostTest {
 protected:
  Paper() {
    host::setVariable(L"TILEMODE", L"0");
    lock();
    mHost = {};
  }
};

TEST_F(Paper, ActiveViewportIsTheEntityOfTheSheet) {
  const Viewport viewport(acedActiveViewportId(), AcDb::kForWrite);
  ASSERT_EQ(viewport.openStatus(), Acad::eOk);
  EXPECT_EQ(viewport->width(), 420);
  EXPECT_EQ(viewport->height(), 297);
  EXPECT_EQ(viewport->viewHeight(), 297);
  EXPECT_EQ(viewport->viewCenter().x, 210);
  EXPECT_EQ(viewport->viewCenter().y, 148.5);
  EXPECT_EQ(Record(acedActiveViewportId(), AcDb::kForRead).openStatus(), Acad::eNotThatKindOfClass);
}

TEST_F(Paper, UpdateDisplayReportsAndDrawsTheChange) {
  {
    const Viewport viewport(acedActiveViewportId(), AcDb::kForWrite);
    EXPECT_EQ(viewport->setViewCenter({100, 50}), Acad::eOk);
    EXPECT_EQ(viewport->setViewHeight(148.5), Acad::eOk);
    EXPECT_TRUE(mHost.mPaper.empty());
    EXPECT_EQ(viewport->updateDisplay(), Acad::eOk);
  }
  ASSERT_EQ(mHost.mPaper.size(), 1u);
  EXPECT_EQ(mHost.mPaper[0].viewport, 1);
  const host::PaperView shown = mHost.mPaper[0];
  EXPECT_EQ(shown.centerX, 100);
  EXPECT_EQ(shown.centerY, 50);
  EXPECT_EQ(shown.width, 210);
  EXPECT_EQ(shown.height, 148.5);
  EXPECT_EQ(mDrawnCount, 1);
  EXPECT_EQ(host::counts().paperUpdates, 1u);
  EXPECT_EQ(host::paperView().width, 210);
  expectPoint(host::camera(1)->target, 100, 50, 0);
  EXPECT_EQ(host::camera(1)->fieldHeight, 148.5);
}

TEST_F(Paper, ViewportIsWrittenOnlyWhenOpenForWrite) {
  const Viewport viewport(acedActiveViewportId(), AcDb::kForRead);
  EXPECT_EQ(viewport->setViewHeight(5), Acad::eNotOpenForWrite);
  EXPECT_EQ(viewport->setViewCenter({1, 1}), Acad::eNotOpenForWrite);
  EXPECT_EQ(breaches(), (std::vector<std::string>{
                            "AcDbViewport::setViewHeight: called for an object that is not open for write",
                            "AcDbViewport::setViewCenter: called for an object that is not open for write"}));
}

TEST_F(Paper, HeightMustBeAboveZero) {
  const Viewport viewport(acedActiveViewportId(), AcDb::kForWrite);
  EXPECT_EQ(viewport->setViewHeight(0), Acad::eInvalidInput);
  EXPECT_EQ(viewport->viewHeight(), 297);
}

TEST_F(Paper, FloatingViewportShowsTheModel) {
  host::setVariable(L"CVPORT", L"2");
  const double fieldBefore = host::camera(2)->fieldWidth;
  const Viewport viewport(acedActiveViewportId(), AcDb::kForWrite);
  ASSERT_EQ(viewport.openStatus(), Acad::eOk);
  viewport->setViewHeight(viewport->viewHeight() * 2);
  viewport->updateDisplay();
  EXPECT_NEAR(host::camera(2)->fieldWidth, fieldBefore * 2, 1e-9);
  EXPECT_EQ(mHost.mPaper[0].viewport, 2);
}

class Tile : public HostTest {
 protected:
  Tile() {
    lock();
    host::Camera camera;
    camera.position = {3, 4, 10};
    camera.target = {3, 4, 0};
    camera.fieldWidth = 16;
    camera.fieldHeight = 8;
    host::setCamera(2, camera);
  }
};

TEST_F(Tile, RecordTakesWhatTheTileShows) {
  EXPECT_EQ(acedVports2VportTableRecords(), Acad::eOk);
  const Record record(acedActiveViewportId(), AcDb::kForWrite);
  ASSERT_EQ(record.openStatus(), Acad::eOk);
  EXPECT_EQ(record->centerPoint().x, 3);
  EXPECT_EQ(record->centerPoint().y, 4);
  EXPECT_EQ(record->width(), 16);
  EXPECT_EQ(record->height(), 8);
}

TEST_F(Tile, TileShowsWhatTheRecordHoldsAndItsWidthFollows) {
  acedVports2VportTableRecords();
  {
    const Record record(acedActiveViewportId(), AcDb::kForWrite);
    record->setCenterPoint({13, -1});
    record->setHeight(4);
  }
  EXPECT_EQ(acedVportTableRecords2Vports(), Acad::eOk);
  const host::Camera camera = *host::camera(2);
  expectPoint(camera.target, 13, -1, 0);
  expectPoint(camera.position, 13, -1, 10);
  EXPECT_EQ(camera.fieldWidth, 8);
  EXPECT_EQ(camera.fieldHeight, 4);
  ASSERT_EQ(mHost.mPaper.size(), 1u);
  EXPECT_EQ(mHost.mPaper[0].width, 8);
  EXPECT_EQ(mDrawnCount, 1);
}

TEST_F(Tile, ConversionWithAnOpenRecordBreaksARule) {
  acedVports2VportTableRecords();
  const Record record(acedActiveViewportId(), AcDb::kForWrite);
  acedVportTableRecords2Vports();
  ASSERT_EQ(host::counts().breaches.size(), 1u);
  EXPECT_EQ(host::counts().breaches[0],
            "acedVportTableRecords2Vports: called while the table record is open");
}

TEST_F(Tile, ConversionBackAndForthChangesNothing) {
  host::Camera slanted = *host::camera(2);
  slanted.position = {40, -31, 17};
  slanted.up = {0, 0, 1};
  host::setCamera(2, slanted);
  acedVports2VportTableRecords();
  acedVportTableRecords2Vports();
  const host::Camera after = *host::camera(2);
  EXPECT_EQ(after.target.x, slanted.target.x);
  EXPECT_EQ(after.position.z, slanted.position.z);
  EXPECT_EQ(after.fieldWidth, slanted.fieldWidth);
}

TEST_F(Tile, RecordIsNotWrittenWhileOpenForRead) {
  acedVports2VportTableRecords();
  const Record record(acedActiveViewportId(), AcDb::kForRead);
  record->setHeight(1);
  record->setCenterPoint({0, 0});
  EXPECT_EQ(record->height(), 8);
  EXPECT_EQ(host::counts().breachesInAll, 2u);
}

TEST_F(Tile, NoDocumentMeansNoViewport) {
  acDocManager->unlockDocument(document());
  host::closeDocument();
  EXPECT_TRUE(acedActiveViewportId().isNull());
  EXPECT_EQ(acedVports2VportTableRecords(), Acad::eNotApplicable);
  EXPECT_EQ(acedVportTableRecords2Vports(), Acad::eNotApplicable);
}

/// A layout with two floating viewports of the drawing's own: the first on the left, with a view of its own.
class TwoWindows : public HostTest {
 protected:
  TwoWindows() {
    host::closeDocument();
    auto drawing = std::make_unique<Drawing>();
    drawing->add(makeLine({0x10}, {0, 0, 0}, {10, 0, 0}));
    Drawing::View front;
    front.target = {1, 2, 3};
    front.direction = {0, -1, 0};
    front.height = 30;
    drawing->mFloatingViewports = {{50, 50, 80, 40, front}, {150, 50, 60, 60, std::nullopt}};
    host::openDocument(std::move(drawing));
    host::setVariable(L"TILEMODE", L"0");
  }
};

TEST_F(TwoWindows, LayoutHasThePlacesOfBoth) {
  const host::Layout layout = host::layout();
  ASSERT_EQ(layout.windows.size(), 2u);
  EXPECT_EQ(layout.windows[0].centerX, 50);
  EXPECT_EQ(layout.windows[1].width, 60);
  EXPECT_NEAR(layout.sheet.width, 170 * 1.1, 1e-9);
  EXPECT_NEAR(layout.sheet.centerX, 95, 1e-9);
}

TEST_F(TwoWindows, CvportTakesTheNumbersThatAreThere) {
  EXPECT_TRUE(host::setVariable(L"CVPORT", L"3"));
  EXPECT_EQ(host::variable(L"CVPORT"), L"3");
  EXPECT_FALSE(host::setVariable(L"CVPORT", L"4"));
  EXPECT_EQ(acgsGetGsView(4, true), nullptr);
  EXPECT_NE(acgsGetGsView(3, true), acgsGetGsView(2, true));
}

TEST_F(TwoWindows, WindowShowsTheViewThatTheDrawingStores) {
  const host::Camera camera = *host::camera(2);
  expectPoint(camera.target, 1, 2, 3);
  expectPoint(camera.position, 1, 1, 3);
  EXPECT_EQ(camera.fieldHeight, 30);
  EXPECT_EQ(camera.fieldWidth, 60);
}

TEST_F(TwoWindows, WindowWithoutAStoredViewShowsAllOfTheDrawing) {
  const host::Camera camera = *host::camera(3);
  expectPoint(camera.target, 5, 0, 0);
  EXPECT_NEAR(camera.fieldWidth, 10.5, 1e-9);
  EXPECT_NEAR(camera.fieldHeight, 10.5, 1e-9);
}

TEST_F(TwoWindows, UpdateOfOneLeavesTheOtherAsItIs) {
  const double before = host::camera(2)->fieldWidth;
  host::setVariable(L"CVPORT", L"3");
  lock();
  {
    const Viewport viewport(acedActiveViewportId(), AcDb::kForWrite);
    ASSERT_EQ(viewport.openStatus(), Acad::eOk);
    EXPECT_EQ(viewport->width(), 60);
    viewport->setViewHeight(21);
    viewport->updateDisplay();
  }
  EXPECT_NEAR(host::camera(3)->fieldWidth, 21, 1e-9);
  EXPECT_EQ(host::camera(2)->fieldWidth, before);
  EXPECT_EQ(mHost.mPaper.back().viewport, 3);
  acDocManager->unlockDocument(document());
}

}  // namespace
