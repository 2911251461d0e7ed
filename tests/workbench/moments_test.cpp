#include "workbench/running/moments.h"

#include "standin_clock.h"
#include "tests/workbench/dxf_text.h"
#include "windows.h"
#include "workbench/dxf/reader.h"
#include "workbench/platform/desktop.h"

// clang-format off
#include "acedads.h"
#include "dbmain.h"
#include "acdocman.h"
// clang-format on

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace workbench {
namespace {

namespace clock = standin::clock;
namespace host = standin::host;

/// A host with two points, 2A and 2B, on a replay clock.
class Moments : public testing::Test {
 protected:
  Moments() {
    clock::start(clock::Kind::kReplay);
    host::start();
    auto drawing = parseDrawing(dxfEntities("0 POINT|5 2A|10 1|20 2|0 POINT|5 2B|10 9|20 9"), "a.dxf");
    mDrawingP = drawing.get();
    host::openDocument(std::move(drawing));
  }
  ~Moments() override { host::closeDocument(); }

  /// As a module moves the first pre-selected entity: under a lock, opened and closed.
  static void moveSelected(const AcGeVector3d& by) {
    ads_name set = {}, name = {};
    AcDbObjectId id;
    AcDbEntity* entity = nullptr;
    acDocManagerPtr()->lockDocument(acDocManagerPtr()->curDocument());
    acedSSGet(L"I", nullptr, nullptr, nullptr, set);
    acedSSName(set, 0, name);
    acdbGetObjectId(id, name);
    acdbOpenAcDbEntity(entity, id, AcDb::kForWrite);
    ASSERT_EQ(entity->transformBy(AcGeMatrix3d().setTranslation(by)), Acad::eOk);
    entity->close();
    acedSSFree(set);
    acDocManagerPtr()->unlockDocument(acDocManagerPtr()->curDocument());
  }

  standin::Drawing* mDrawingP = nullptr;  ///< owned by the host
};

TEST_F(Moments, ShapesAreThoseOfTheBeginning) {
  MomentRecorder recorder(100, 2);
  recorder.begin();
  const auto shapes = recorder.takeShapes();
  ASSERT_EQ(shapes.size(), 2u);
  EXPECT_EQ(shapes[0].handle, 0x2Au);
  EXPECT_EQ(shapes[0].colour, 7);
}

TEST_F(Moments, EachMomentIsTakenAtTheFirstLookAfterItsTime) {
  MomentRecorder recorder(100, 3);
  recorder.begin();
  recorder.look();
  clock::advanceTo(49);
  recorder.look();
  clock::advanceTo(60);
  host::select({0x2A});
  recorder.look();
  recorder.finish();
  const auto moments = recorder.takeMoments();
  ASSERT_EQ(moments.size(), 3u);
  EXPECT_EQ(moments[0].timeMs, 0);
  EXPECT_TRUE(moments[0].selection.empty());
  EXPECT_EQ(moments[1].timeMs, 50);
  EXPECT_EQ(moments[1].selection, (std::vector<std::uint64_t>{0x2A}));
  EXPECT_EQ(moments[2].timeMs, 100);
}

TEST_F(Moments, MovedEntityIsChangedFromThenOn) {
  MomentRecorder recorder(100, 2);
  recorder.begin();
  host::select({0x2A});
  recorder.look();
  moveSelected({5, 0, 0});
  recorder.finish();
  const auto moments = recorder.takeMoments();
  EXPECT_TRUE(moments.at(0).changed.empty());
  ASSERT_EQ(moments.at(1).changed.size(), 1u);
  EXPECT_EQ(moments.at(1).changed[0].outline.at(0).at(0).x, 6);
}

TEST_F(Moments, ChangesBeyondTheLimitAreLeftOutAndCounted) {
  constexpr std::size_t kVertices = MomentRecorder::kMostChanges / 3;
  std::string polyline = "0 LWPOLYLINE|5 2C";
  for (std::size_t i = 0; i < kVertices; ++i) polyline += "|10 1|20 2";
  host::openDocument(parseDrawing(dxfEntities(polyline), "a.dxf"));
  MomentRecorder recorder(100, 5);
  recorder.begin();
  host::select({0x2C});
  recorder.look();
  moveSelected({5, 0, 0});
  clock::advanceTo(75);
  recorder.look();
  recorder.finish();
  const auto moments = recorder.takeMoments();
  host::closeDocument();
  // The first is before the movement, and three have room for it.
  EXPECT_TRUE(moments.at(0).changed.empty());
  EXPECT_EQ(moments.at(3).changed.size(), 1u);
  EXPECT_TRUE(moments.at(4).changed.empty());
  EXPECT_EQ(recorder.leftOut(), 1u);
}

TEST_F(Moments, RecolouredEntityIsChanged) {
  MomentRecorder recorder(100, 2);
  recorder.begin();
  host::select({0x2A});
  recorder.look();
  mDrawingP->addLayer({"0", 3, false, true});
  recorder.finish();
  const auto moments = recorder.takeMoments();
  ASSERT_EQ(moments.at(1).changed.size(), 1u);
  EXPECT_EQ(moments.at(1).changed[0].colour, 3);
}

TEST_F(Moments, EntityMovedBetweenMomentsIsChanged) {
  // Selected, moved and let go of while no moment is taken.
  MomentRecorder recorder(100, 2);
  recorder.begin();
  recorder.look();
  clock::advanceTo(30);
  host::select({0x2B});
  recorder.look();
  moveSelected({0, 5, 0});
  host::selectNone();
  clock::advanceTo(60);
  recorder.look();
  recorder.finish();
  const auto moments = recorder.takeMoments();
  EXPECT_TRUE(moments.at(0).changed.empty());
  EXPECT_TRUE(moments.at(1).selection.empty());
  ASSERT_EQ(moments.at(1).changed.size(), 1u);
  EXPECT_EQ(moments.at(1).changed[0].handle, 0x2Bu);
  EXPECT_EQ(moments.at(1).changed[0].outline.at(0).at(0).y, 14);
}

TEST_F(Moments, DesktopIsTakenWhenRequested) {
  resetDesktop();
  MomentRecorder without(100, 1);
  without.begin();
  without.finish();
  EXPECT_FALSE(without.takeMoments().at(0).desktop);
  MomentRecorder recorder(100, 1, MomentRecorder::Desktop::kShown);
  recorder.begin();
  movePointer(PointerTarget::kTree);
  recorder.finish();
  const auto desktop = recorder.takeMoments().at(0).desktop;
  ASSERT_TRUE(desktop);
  const auto tree =
      std::find_if(desktop->windows.begin(), desktop->windows.end(),
                   [](const ReportWindow& window) { return window.className == "SysTreeView32"; });
  ASSERT_NE(tree, desktop->windows.end());
  EXPECT_EQ(tree->vertical->maximum, 2000);
  EXPECT_GE(desktop->pointer[0], tree->rect[0]);
  EXPECT_LT(desktop->pointer[0], tree->rect[2]);
}

TEST_F(Moments, ErasedEntityIsGone) {
  MomentRecorder recorder(100, 1);
  recorder.begin();
  host::drawing()->erase(0x2B);
  recorder.finish();
  const auto moments = recorder.takeMoments();
  EXPECT_EQ(moments.at(0).gone, (std::vector<std::uint64_t>{0x2B}));
  EXPECT_TRUE(moments.at(0).changed.empty());
}

TEST_F(Moments, NewEntityIsChanged) {
  MomentRecorder recorder(100, 1);
  recorder.begin();
  host::drawing()->add(standin::makePoint({0x30}, {3, 3, 3}));
  recorder.finish();
  EXPECT_EQ(recorder.takeMoments().at(0).changed.at(0).handle, 0x30u);
}

TEST_F(Moments, AnotherDocumentHidesTheDrawingOfTheRun) {
  MomentRecorder recorder(100, 2);
  recorder.begin();
  auto other = std::make_unique<standin::Drawing>();
  other->add(standin::makePoint({0x2A}, {7, 7, 7}));
  host::openDocument(std::move(other), L"other.dwg");
  recorder.look();
  host::closeDocument();
  recorder.finish();
  const auto moments = recorder.takeMoments();
  ASSERT_EQ(moments.size(), 2u);
  EXPECT_EQ(moments[0].gone, (std::vector<std::uint64_t>{0x2B}));
  ASSERT_EQ(moments[0].changed.size(), 1u);
  EXPECT_EQ(moments[0].changed[0].handle, 0x2Au);
  EXPECT_TRUE(moments[1].gone.empty());
  EXPECT_TRUE(moments[1].changed.empty());
}

TEST_F(Moments, WindowOfALayoutIsTheCurrentOne) {
  auto drawing = std::make_unique<standin::Drawing>();
  drawing->mFloatingViewports = {{50, 50, 80, 40, {}}, {150, 50, 60, 60, {}}};
  host::openDocument(std::move(drawing), L"two.dwg");
  host::setVariable(L"TILEMODE", L"0");
  host::setVariable(L"CVPORT", L"3");
  MomentRecorder recorder(100, 1);
  recorder.begin();
  recorder.finish();
  const auto moment = recorder.takeMoments().at(0);
  EXPECT_EQ(moment.window.centerX, 150);
  EXPECT_EQ(moment.sheet.centerX, 95);
  host::closeDocument();
}

TEST_F(Moments, SheetOfALayoutIsPaper) {
  MomentRecorder recorder(100, 1);
  recorder.begin();
  host::setVariable(L"TILEMODE", L"0");
  host::setVariable(L"CVPORT", L"1");
  recorder.finish();
  const auto moment = recorder.takeMoments().at(0);
  EXPECT_TRUE(moment.isLayout);
  EXPECT_TRUE(moment.isPaper);
  EXPECT_EQ(moment.viewport, 1);
  EXPECT_EQ(moment.camera.fieldHeight, host::camera(2)->fieldHeight) << "of the window in it";
}

TEST_F(Moments, WindowOfALayoutIsNotPaper) {
  MomentRecorder recorder(100, 1);
  recorder.begin();
  host::setVariable(L"TILEMODE", L"0");
  host::setVariable(L"CVPORT", L"2");
  recorder.finish();
  const auto moment = recorder.takeMoments().at(0);
  EXPECT_TRUE(moment.isLayout);
  EXPECT_FALSE(moment.isPaper);
}

std::wstring classUnderPointer() {
  POINT point{};
  GetCursorPos(&point);
  wchar_t name[64] = {};
  const HWND window = WindowFromPoint(point);
  if (window != nullptr) GetClassNameW(window, name, 64);
  return name;
}

TEST(Desktop, EachTargetPutsThePointerOnAnotherWindow) {
  resetDesktop();
  std::set<std::wstring> classes;
  for (const PointerTarget target :
       {PointerTarget::kCanvas, PointerTarget::kTree, PointerTarget::kEdit, PointerTarget::kQt}) {
    movePointer(target);
    classes.insert(classUnderPointer());
  }
  EXPECT_EQ(classes.size(), 4u);
  EXPECT_EQ(classes.count(L""), 0u);
  movePointer(PointerTarget::kNone);
  EXPECT_EQ(classUnderPointer(), L"");
}

TEST(Desktop, BoxesAndBeepsAreReportedAsText) {
  resetDesktop();
  std::vector<std::wstring> told;
  listenToDesktop([&told](const DesktopMessage& message) { told.push_back(message.text); });
  Beep(440, 200);
  MessageBoxW(nullptr, L"text", L"caption", 0);
  listenToDesktop({});
  Beep(1, 1);
  EXPECT_EQ(told, (std::vector<std::wstring>{L"440 Hz, 200 ms", L"caption\ntext"}));
}

}  // namespace
}  // namespace workbench
