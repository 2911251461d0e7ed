#include "standin_clock.h"
#include "standin_desktop.h"
#include "standin_win32_faults.h"
#include "tests/module/module_fixture.h"

#include <gmock/gmock.h>

namespace clock_ = standin::clock;
namespace desktop = standin::desktop;
using ::testing::IsEmpty;

namespace {

class Scrolling : public ModuleTest {
 protected:
  Scrolling() : mDesktop(desktop::makeStandardDesktop()) {}
  ~Scrolling() override { desktop::clear(); }
  void SetUp() override { load(); }
  bool scroll(int x, int y, int z) { return proxy().scrollTreeOrList(x, y, z); }
  /// Milliseconds that the scrolling took.
  std::int64_t timed(int x, int y, int z) {
    const std::int64_t before = clock_::nowMs();
    EXPECT_TRUE(scroll(x, y, z));
    return clock_::nowMs() - before;
  }
  int position(HWND window, int bar = SB_VERT) { return desktop::scrollBar(window, bar)->position; }
  std::size_t sent() { return desktop::sentMessages().size(); }

  desktop::StandardDesktop mDesktop;
};

TEST_F(Scrolling, LongTreeScrollsTenLinesAPass) {
  ASSERT_TRUE(desktop::pointAt("tree"));
  EXPECT_TRUE(scroll(0, 0, 100));
  EXPECT_EQ(position(mDesktop.tree), 10);
  EXPECT_EQ(sent(), 10u);
}

TEST_F(Scrolling, CodePageThatRefusesAReplacementNamesTheClassesToo) {
  ASSERT_TRUE(desktop::pointAt("tree"));
  ASSERT_TRUE(
      standin::windows::faults().inject("WideCharToMultiByte", {standin::Misbehaviour::kFail, 1, true}));
  EXPECT_TRUE(scroll(0, 0, 100));
  EXPECT_EQ(sent(), 10u);
  standin::windows::faults().clear();
}

TEST_F(Scrolling, ShortListScrollsOneLineAPass) {
  ASSERT_TRUE(desktop::pointAt("list"));
  EXPECT_TRUE(scroll(0, 0, 100));
  EXPECT_EQ(position(mDesktop.list), 1);
  EXPECT_EQ(sent(), 1u);
}

TEST_F(Scrolling, PushUpScrollsUp) {
  ASSERT_TRUE(desktop::pointAt("tree"));
  ASSERT_TRUE(desktop::setScrollBar(mDesktop.tree, SB_VERT, {0, 2000, 40, 500}));
  EXPECT_TRUE(scroll(0, 300, 100));
  EXPECT_EQ(position(mDesktop.tree), 490);
}

TEST_F(Scrolling, TopOfAListSendsNothingButWaits) {
  ASSERT_TRUE(desktop::pointAt("list"));
  EXPECT_EQ(timed(0, 0, -100), 100);
  EXPECT_EQ(sent(), 0u);
}

TEST_F(Scrolling, EndOfAListSendsNothingButWaits) {
  ASSERT_TRUE(desktop::pointAt("list"));
  ASSERT_TRUE(desktop::setScrollBar(mDesktop.list, SB_VERT, {0, 150, 20, 131}));
  EXPECT_EQ(timed(0, 0, 100), 100);
  EXPECT_EQ(sent(), 0u);
}

TEST_F(Scrolling, SidewaysPushScrollsHorizontally) {
  ASSERT_TRUE(desktop::pointAt("edit"));
  EXPECT_TRUE(scroll(200, 50, 0));
  EXPECT_EQ(position(mDesktop.edit, SB_HORZ), 3);
  EXPECT_EQ(position(mDesktop.edit, SB_VERT), 0);
  EXPECT_TRUE(scroll(-200, 50, 0));
  EXPECT_EQ(position(mDesktop.edit, SB_HORZ), 0);
}

TEST_F(Scrolling, EqualAmountsAreUsedUpWithoutAWait) {
  ASSERT_TRUE(desktop::pointAt("tree"));
  EXPECT_EQ(timed(100, 0, -100), 0);
  EXPECT_EQ(sent(), 0u);
}

TEST_F(Scrolling, ControlWithoutAScrollBarDeclines) {
  ASSERT_TRUE(desktop::pointAt("list"));
  ASSERT_TRUE(desktop::setScrollBar(mDesktop.list, SB_VERT, {0, 0, 20, 0}));
  EXPECT_FALSE(scroll(0, 0, 100));
  EXPECT_FALSE(scroll(100, 0, 0)) << "it has no horizontal bar";
}

struct WaitCase {
  int amount;
  int maximum;
  int ms;
};

class Waits : public Scrolling, public ::testing::WithParamInterface<WaitCase> {};

TEST_P(Waits, WaitIsShorterTheFurtherTheCapIsPushedAndLongerInShortLists) {
  ASSERT_TRUE(desktop::pointAt("tree"));
  ASSERT_TRUE(desktop::setScrollBar(mDesktop.tree, SB_VERT, {0, GetParam().maximum, 1, 0}));
  EXPECT_EQ(timed(0, 0, GetParam().amount), GetParam().ms);
}

INSTANTIATE_TEST_SUITE_P(AmountsAndRanges, Waits,
                         ::testing::Values(WaitCase{1, 2000, 150}, WaitCase{100, 2000, 100},
                                           WaitCase{101, 2000, 100}, WaitCase{200, 2000, 50},
                                           WaitCase{297, 2000, 2}, WaitCase{300, 2000, 1},
                                           WaitCase{32767, 2000, 1}, WaitCase{-32768, 2000, 1},
                                           WaitCase{1, 10, 190}, WaitCase{100, 49, 101},
                                           WaitCase{100, 50, 100}, WaitCase{300, 10, 41}));

TEST_F(Scrolling, QtWidgetGetsTheWheelWithThePointersPosition) {
  ASSERT_TRUE(desktop::pointAt("qt"));
  EXPECT_EQ(timed(0, 0, 100), 100);
  ASSERT_EQ(sent(), 1u);
  const desktop::SentMessage message = desktop::sentMessages()[0];
  POINT pointer{};
  GetCursorPos(&pointer);
  EXPECT_EQ(message.window, mDesktop.qt);
  EXPECT_EQ(message.message, WM_MOUSEWHEEL);
  EXPECT_EQ(static_cast<std::int16_t>(HIWORD(message.wParam)), -120);
  EXPECT_EQ(LOWORD(message.lParam), pointer.x);
  EXPECT_EQ(HIWORD(message.lParam), pointer.y);
  EXPECT_EQ(desktop::updates(mDesktop.qt), 1u);
}

TEST_F(Scrolling, QtWidgetTakesTheStrongerDirection) {
  ASSERT_TRUE(desktop::pointAt("qt"));
  scroll(-100, 0, 50);
  scroll(0, 0, -50);
  scroll(50, 0, 50);
  ASSERT_EQ(sent(), 2u) << "none for equal amounts";
  for (const desktop::SentMessage& message : desktop::sentMessages())
    EXPECT_EQ(static_cast<std::int16_t>(HIWORD(message.wParam)), 120);
}

TEST_F(Scrolling, CanvasAndEmptyScreenDecline) {
  for (const char* const place : {"canvas", "none"}) {
    ASSERT_TRUE(desktop::pointAt(place));
    EXPECT_FALSE(scroll(0, 0, 100)) << place;
  }
}

TEST_F(Scrolling, ScrollingThatIsSwitchedOffDeclines) {
  ASSERT_TRUE(desktop::pointAt("tree"));
  mCoreP->setScrollTreeAndList(false);
  EXPECT_FALSE(scroll(0, 0, 100));
}

TEST_F(Scrolling, DrawingStaysStillWhileAListScrolls) {
  ASSERT_TRUE(desktop::pointAt("tree"));
  deflect({0, 0, 100, 50, 0, 0});
  idle(2000);
  EXPECT_THAT(mHost.mUpdates, IsEmpty());
  EXPECT_FALSE(proxy().isCapMoving());
  EXPECT_FALSE(hasLogged("Cap moving."));
  EXPECT_EQ(standin::host::counts().locks, 0u);
  deflect({});
  idle(200);
  EXPECT_FALSE(hasLogged("Cap released."));
  EXPECT_GT(position(mDesktop.tree), 100);
}

TEST_F(Scrolling, ReleaseOverAListEndsTheMovement) {
  ASSERT_TRUE(desktop::pointAt("canvas"));
  deflect({10, 0, 0, 0, 0, 0});
  idle(200);
  ASSERT_TRUE(proxy().isCapMoving());
  ASSERT_TRUE(desktop::pointAt("tree"));
  deflect({});
  idle(50);
  EXPECT_FALSE(proxy().isCapMoving());
  EXPECT_EQ(mHost.mCommits.size(), 1u);
}

TEST_F(Scrolling, RangeThatBeginsAboveZeroScrollsWhileThePositionIsAboveZero) {
  ASSERT_TRUE(desktop::pointAt("list"));
  ASSERT_TRUE(desktop::setScrollBar(mDesktop.list, SB_VERT, {10, 200, 20, 10}));
  EXPECT_TRUE(scroll(0, 0, -100));
  EXPECT_EQ(sent(), 2u);
}

TEST_F(Scrolling, PositionIsReadOnceForAllLinesOfAPass) {
  ASSERT_TRUE(desktop::pointAt("tree"));
  ASSERT_TRUE(desktop::setScrollBar(mDesktop.tree, SB_VERT, {0, 2000, 40, 1958}));
  EXPECT_TRUE(scroll(0, 0, 100));
  EXPECT_EQ(sent(), 10u);
}

TEST_F(Scrolling, LinesAreSentWithoutAControl) {
  ASSERT_TRUE(desktop::pointAt("tree"));
  EXPECT_TRUE(scroll(0, 0, 100));
  ASSERT_EQ(sent(), 10u);
  for (const desktop::SentMessage& message : desktop::sentMessages()) {
    EXPECT_EQ(message.message, WM_VSCROLL);
    EXPECT_EQ(message.wParam, SB_LINEDOWN);
    EXPECT_EQ(message.lParam, 0);
  }
}

TEST_F(Scrolling, SidewaysPushWaitsByItsOwnAmountAndRange) {
  ASSERT_TRUE(desktop::pointAt("edit"));
  EXPECT_EQ(timed(200, 50, 0), 50);
  ASSERT_TRUE(desktop::setScrollBar(mDesktop.edit, SB_HORZ, {0, 30, 10, 0}));
  EXPECT_EQ(timed(-200, 50, 0), 50 + 20);
}

TEST_F(Scrolling, RightEndOfAFieldSendsNothingButWaits) {
  ASSERT_TRUE(desktop::pointAt("edit"));
  ASSERT_TRUE(desktop::setScrollBar(mDesktop.edit, SB_HORZ, {0, 300, 80, 221}));
  EXPECT_EQ(timed(200, 50, 0), 50);
  EXPECT_EQ(sent(), 0u);
}

TEST_F(Scrolling, EqualAmountsOverAQtWidgetWait) {
  ASSERT_TRUE(desktop::pointAt("qt"));
  EXPECT_EQ(timed(100, 0, 100), 100);
  EXPECT_EQ(sent(), 0u);
  EXPECT_EQ(desktop::updates(mDesktop.qt), 0u);
}

TEST_F(Scrolling, DrawingMovesAgainWhenThePointerLeaves) {
  ASSERT_TRUE(desktop::pointAt("tree"));
  deflect({0, 0, 100, 0, 0, 0});
  idle(500);
  ASSERT_TRUE(desktop::pointAt("canvas"));
  idle(700);
  EXPECT_FALSE(mHost.mUpdates.empty());
  EXPECT_TRUE(proxy().isCapMoving());
}

}  // namespace
