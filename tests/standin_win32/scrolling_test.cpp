#include "standin_desktop.h"
#include "windows.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

namespace desktop = standin::desktop;
using desktop::ScrollBar;

class Scrolling : public testing::Test {
 protected:
  void SetUp() override { desktop::clear(); }

  static HWND control(const ScrollBar& vertical) {
    desktop::WindowSpec spec;
    spec.className = L"ListBox";
    spec.rect = {0, 0, 10, 10};
    spec.vertical = vertical;
    return desktop::createWindow(spec);
  }
  static int position(HWND window, int bar = SB_VERT) { return desktop::scrollBar(window, bar)->position; }
  static void vertical(HWND window, WORD code) { SendMessageW(window, WM_VSCROLL, MAKEWPARAM(code, 0), 0); }
  static void wheel(HWND window, int delta) { SendMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(0, delta), 0); }
};

TEST_F(Scrolling, LineCodesMoveThePositionByOne) {
  const HWND list = control({0, 100, 10, 50});
  vertical(list, SB_LINEDOWN);
  EXPECT_EQ(position(list), 51);
  vertical(list, SB_LINEUP);
  vertical(list, SB_LINEUP);
  EXPECT_EQ(position(list), 49);
}

TEST_F(Scrolling, PositionStaysInsideItsLimits) {
  const HWND list = control({0, 100, 10, 90});
  vertical(list, SB_LINEDOWN);
  vertical(list, SB_LINEDOWN);
  EXPECT_EQ(position(list), 91);
  desktop::setScrollBar(list, SB_VERT, {5, 100, 10, 5});
  vertical(list, SB_LINEUP);
  EXPECT_EQ(position(list), 5);
}

TEST_F(Scrolling, PositionReachesTheMaximumWithoutAPage) {
  const HWND list = control({0, 3, 0, 0});
  vertical(list, SB_BOTTOM);
  EXPECT_EQ(position(list), 3);
}

TEST_F(Scrolling, RangeThatIsAllInViewDoesNotMove) {
  const HWND list = control({0, 5, 20, 3});
  EXPECT_EQ(position(list), 0);
  vertical(list, SB_LINEDOWN);
  EXPECT_EQ(position(list), 0);
}

TEST_F(Scrolling, PageAndEndCodesMoveThePosition) {
  const HWND list = control({0, 100, 10, 50});
  vertical(list, SB_PAGEDOWN);
  EXPECT_EQ(position(list), 60);
  vertical(list, SB_PAGEUP);
  EXPECT_EQ(position(list), 50);
  vertical(list, SB_BOTTOM);
  EXPECT_EQ(position(list), 91);
  vertical(list, SB_TOP);
  EXPECT_EQ(position(list), 0);
  vertical(list, SB_ENDSCROLL);
  EXPECT_EQ(position(list), 0);
}

TEST_F(Scrolling, PositionStaysInARangeThatBeginsAboveZero) {
  const HWND list = control({40, 100, 10, 0});
  EXPECT_EQ(position(list), 40);
  vertical(list, SB_LINEUP);
  EXPECT_EQ(position(list), 40);
  vertical(list, SB_BOTTOM);
  EXPECT_EQ(position(list), 91);
  vertical(list, SB_TOP);
  EXPECT_EQ(position(list), 40);
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE;
  EXPECT_EQ(GetScrollInfo(list, SB_VERT, &info), TRUE);
  EXPECT_EQ(info.nMin, 40);
}

TEST_F(Scrolling, VerticalMessagesLeaveTheHorizontalBar) {
  const auto made = desktop::makeStandardDesktop();
  SendMessageW(made.edit, WM_HSCROLL, SB_LINERIGHT, 0);
  EXPECT_EQ(position(made.edit, SB_HORZ), 1);
  EXPECT_EQ(position(made.edit, SB_VERT), 0);
  vertical(made.edit, SB_LINEDOWN);
  SendMessageW(made.edit, WM_HSCROLL, SB_LINELEFT, 0);
  EXPECT_EQ(position(made.edit, SB_HORZ), 0);
  EXPECT_EQ(position(made.edit, SB_VERT), 1);
}

TEST_F(Scrolling, WheelTurnMovesThreeLines) {
  const HWND list = control({0, 100, 10, 50});
  wheel(list, -WHEEL_DELTA);
  EXPECT_EQ(position(list), 53);
  wheel(list, WHEEL_DELTA);
  wheel(list, WHEEL_DELTA);
  EXPECT_EQ(position(list), 47);
}

TEST_F(Scrolling, WindowWithoutABarPassesTheWheelToItsParent) {
  const HWND list = control({0, 100, 10, 50});
  desktop::WindowSpec spec;
  spec.parent = list;
  const HWND inner = desktop::createWindow(spec);
  wheel(inner, -WHEEL_DELTA);
  EXPECT_EQ(position(list), 53);
}

TEST_F(Scrolling, WidgetWithItsOwnBarsReactsOnlyToTheWheel) {
  const auto made = desktop::makeStandardDesktop();
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_ALL;
  EXPECT_EQ(GetScrollInfo(made.qt, SB_VERT, &info), FALSE);
  vertical(made.qt, SB_LINEDOWN);
  EXPECT_EQ(position(made.qt), 0);
  wheel(made.qt, -WHEEL_DELTA);
  EXPECT_EQ(position(made.qt), 3);
}

TEST_F(Scrolling, ScrollInfoFillsExactlyTheMaskedFields) {
  const HWND list = control({1, 100, 10, 50});
  SCROLLINFO info{sizeof(SCROLLINFO), SIF_POS | SIF_RANGE, -1, -1, 77, -1, -7};
  EXPECT_EQ(GetScrollInfo(list, SB_VERT, &info), TRUE);
  EXPECT_EQ(info.nMin, 1);
  EXPECT_EQ(info.nMax, 100);
  EXPECT_EQ(info.nPage, 77u);
  EXPECT_EQ(info.nPos, 50);
  EXPECT_EQ(info.nTrackPos, -7);
  info.fMask = SIF_PAGE | SIF_TRACKPOS;
  EXPECT_EQ(GetScrollInfo(list, SB_VERT, &info), TRUE);
  EXPECT_EQ(info.nPage, 10u);
  EXPECT_EQ(info.nTrackPos, 50);
}

TEST_F(Scrolling, ScrollInfoNeedsABarOfTheKindAndTheRightSize) {
  const HWND list = control({0, 100, 10, 50});
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  EXPECT_EQ(GetScrollInfo(list, SB_HORZ, &info), FALSE);
  EXPECT_EQ(GetScrollInfo(list, 5, &info), FALSE);
  EXPECT_EQ(GetScrollInfo(list, SB_VERT, nullptr), FALSE);
  info.cbSize = 24;
  EXPECT_EQ(GetScrollInfo(list, SB_VERT, &info), FALSE);
}

TEST_F(Scrolling, SentMessagesAreRecorded) {
  const HWND list = control({0, 100, 10, 50});
  vertical(list, SB_LINEUP);
  SendMessageW(list, WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), MAKELPARAM(300, -2));
  const auto sent = desktop::sentMessages();
  ASSERT_EQ(sent.size(), 2u);
  EXPECT_EQ(sent[0].window, list);
  EXPECT_EQ(sent[0].message, static_cast<UINT>(WM_VSCROLL));
  EXPECT_EQ(sent[0].wParam, static_cast<WPARAM>(SB_LINEUP));
  EXPECT_EQ(sent[1].message, static_cast<UINT>(WM_MOUSEWHEEL));
  EXPECT_EQ(GET_WHEEL_DELTA_WPARAM(sent[1].wParam), -WHEEL_DELTA);
  EXPECT_EQ(sent[1].lParam, static_cast<LPARAM>(0xFFFE012C));
  desktop::clearSentMessages();
  EXPECT_TRUE(desktop::sentMessages().empty());
}

TEST_F(Scrolling, MessageToNoWindowIsOnlyRecorded) {
  EXPECT_EQ(SendMessageW(nullptr, WM_VSCROLL, SB_LINEUP, 0), 0);
  EXPECT_EQ(desktop::sentMessages().size(), 1u);
}

}  // namespace
