#include "standin_desktop.h"
#include "windows.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

namespace desktop = standin::desktop;

class Desktop : public testing::Test {
 protected:
  void SetUp() override { desktop::clear(); }

  static HWND window(HWND parent, const RECT& rect, bool isShown = true) {
    desktop::WindowSpec spec;
    spec.className = L"Any";
    spec.parent = parent;
    spec.rect = rect;
    spec.isShown = isShown;
    return desktop::createWindow(spec);
  }
};

TEST_F(Desktop, FreshDesktopIsEmpty) {
  POINT point{9, 9};
  EXPECT_EQ(GetCursorPos(&point), TRUE);
  EXPECT_EQ(point.x, 0);
  EXPECT_EQ(point.y, 0);
  EXPECT_EQ(WindowFromPoint(point), nullptr);
}

TEST_F(Desktop, PointerIsWhereItWasSet) {
  desktop::setPointer({-3, 7});
  POINT point{};
  EXPECT_EQ(GetCursorPos(&point), TRUE);
  EXPECT_EQ(point.x, -3);
  EXPECT_EQ(point.y, 7);
  EXPECT_EQ(GetCursorPos(nullptr), FALSE);
}

TEST_F(Desktop, RectangleExcludesItsRightAndBottomEdges) {
  const RECT rect{10, 20, 30, 40};
  EXPECT_EQ(PtInRect(&rect, {10, 20}), TRUE);
  EXPECT_EQ(PtInRect(&rect, {29, 39}), TRUE);
  EXPECT_EQ(PtInRect(&rect, {30, 39}), FALSE);
  EXPECT_EQ(PtInRect(&rect, {29, 40}), FALSE);
  EXPECT_EQ(PtInRect(&rect, {9, 20}), FALSE);
  EXPECT_EQ(PtInRect(nullptr, {10, 20}), FALSE);
}

TEST_F(Desktop, NewestTopLevelWindowAndOldestChildAreOnTop) {
  const HWND lower = window(nullptr, {0, 0, 100, 100});
  const HWND upper = window(nullptr, {0, 0, 100, 100});
  const HWND elder = window(upper, {0, 0, 50, 50});
  const HWND younger = window(upper, {0, 0, 80, 80});
  EXPECT_EQ(WindowFromPoint({10, 10}), elder);
  EXPECT_EQ(WindowFromPoint({60, 60}), younger);
  EXPECT_EQ(WindowFromPoint({90, 90}), upper);
  desktop::raise(younger);
  EXPECT_EQ(WindowFromPoint({10, 10}), younger);
  desktop::raise(lower);
  EXPECT_EQ(WindowFromPoint({10, 10}), lower);
}

TEST_F(Desktop, HiddenWindowHidesItsChildren) {
  const HWND frame = window(nullptr, {0, 0, 100, 100});
  const HWND panel = window(frame, {0, 0, 100, 100}, false);
  const HWND field = window(panel, {0, 0, 100, 100});
  EXPECT_EQ(WindowFromPoint({10, 10}), frame);
  EXPECT_EQ(IsWindowVisible(field), FALSE);
  desktop::setShown(panel, true);
  EXPECT_EQ(WindowFromPoint({10, 10}), field);
  EXPECT_EQ(IsWindowVisible(field), TRUE);
}

TEST_F(Desktop, ChildIsSeenOnlyInsideItsParent) {
  const HWND frame = window(nullptr, {0, 0, 50, 50});
  window(frame, {0, 0, 100, 100});
  EXPECT_EQ(WindowFromPoint({70, 70}), nullptr);
}

TEST_F(Desktop, WindowsReportTheirRelatives) {
  const HWND frame = window(nullptr, {0, 0, 100, 100});
  const HWND panel = window(frame, {0, 0, 50, 50});
  const HWND first = window(panel, {0, 0, 10, 10});
  const HWND second = window(panel, {0, 0, 10, 10});
  EXPECT_EQ(GetParent(second), panel);
  EXPECT_EQ(GetParent(frame), nullptr);
  EXPECT_EQ(GetWindow(panel, GW_CHILD), first);
  EXPECT_EQ(GetWindow(first, GW_CHILD), nullptr);
  EXPECT_EQ(GetWindow(first, GW_HWNDNEXT), second);
  EXPECT_EQ(GetWindow(second, GW_HWNDNEXT), nullptr);
  EXPECT_EQ(GetWindow(second, GW_HWNDPREV), first);
  EXPECT_EQ(GetWindow(second, GW_HWNDFIRST), first);
  EXPECT_EQ(GetWindow(first, GW_HWNDLAST), second);
  EXPECT_EQ(GetAncestor(second, GA_ROOT), frame);
  EXPECT_EQ(GetAncestor(second, GA_PARENT), panel);
}

TEST_F(Desktop, WindowReportsItsRectangleAndClassName) {
  const HWND frame = window(nullptr, {1, 2, 3, 4});
  RECT rect{};
  EXPECT_EQ(GetWindowRect(frame, &rect), TRUE);
  EXPECT_EQ(rect.left, 1);
  EXPECT_EQ(rect.bottom, 4);
  wchar_t name[8];
  EXPECT_EQ(GetClassNameW(frame, name, 8), 3);
  EXPECT_STREQ(name, L"Any");
  EXPECT_EQ(GetClassNameW(frame, name, 3), 2);
  EXPECT_STREQ(name, L"An");
}

TEST_F(Desktop, EveryFunctionRefusesAHandleThatIsNoWindow) {
  const HWND gone = window(nullptr, {0, 0, 10, 10});
  EXPECT_TRUE(desktop::destroyWindow(gone));
  EXPECT_FALSE(desktop::destroyWindow(gone));
  RECT rect{};
  wchar_t name[8];
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  EXPECT_EQ(GetWindowRect(gone, &rect), FALSE);
  EXPECT_EQ(GetClassNameW(gone, name, 8), 0);
  EXPECT_EQ(GetParent(gone), nullptr);
  EXPECT_EQ(GetWindow(gone, GW_HWNDNEXT), nullptr);
  EXPECT_EQ(GetAncestor(gone, GA_ROOT), nullptr);
  EXPECT_EQ(IsWindowVisible(gone), FALSE);
  EXPECT_EQ(GetScrollInfo(gone, SB_VERT, &info), FALSE);
  EXPECT_EQ(UpdateWindow(gone), FALSE);
  EXPECT_EQ(window(gone, {0, 0, 1, 1}), nullptr);
  EXPECT_FALSE(desktop::raise(gone));
  EXPECT_FALSE(desktop::setShown(gone, true));
}

TEST_F(Desktop, DestroyedWindowTakesItsChildrenWithIt) {
  const HWND frame = window(nullptr, {0, 0, 100, 100});
  const HWND panel = window(frame, {0, 0, 50, 50});
  const HWND first = window(panel, {0, 0, 10, 10});
  const HWND second = window(panel, {0, 0, 10, 10});
  EXPECT_TRUE(desktop::destroyWindow(panel));
  EXPECT_EQ(GetParent(first), nullptr);
  EXPECT_EQ(GetParent(second), nullptr);
  EXPECT_EQ(WindowFromPoint({5, 5}), frame);
  EXPECT_NE(window(frame, {0, 0, 1, 1}), panel);
}

TEST_F(Desktop, DisabledWindowIsPassedOverWithItsChildren) {
  const HWND frame = window(nullptr, {0, 0, 100, 100});
  const HWND panel = window(frame, {0, 0, 50, 50});
  window(panel, {0, 0, 50, 50});
  ASSERT_TRUE(desktop::setEnabled(panel, false));
  EXPECT_EQ(WindowFromPoint({10, 10}), frame);
  EXPECT_EQ(IsWindowVisible(panel), TRUE) << "it is seen all the same";
  desktop::setEnabled(panel, true);
  EXPECT_NE(WindowFromPoint({10, 10}), frame);
  EXPECT_FALSE(desktop::setEnabled(nullptr, true));
}

HWND owned(HWND owner) {
  desktop::WindowSpec spec;
  spec.className = L"Tool";
  spec.rect = {0, 0, 20, 20};
  spec.owner = owner;
  return desktop::createWindow(spec);
}

TEST_F(Desktop, ParentOfAnOwnedWindowIsItsOwner) {
  const HWND frame = window(nullptr, {0, 0, 100, 100});
  const HWND tool = owned(frame);
  EXPECT_EQ(GetParent(tool), frame);
  EXPECT_EQ(GetWindow(tool, GW_OWNER), frame);
  EXPECT_EQ(GetWindow(frame, GW_CHILD), nullptr);
  EXPECT_EQ(GetAncestor(tool, GA_PARENT), nullptr);
  EXPECT_EQ(GetAncestor(tool, GA_ROOT), tool);
  EXPECT_EQ(GetAncestor(tool, GA_ROOTOWNER), frame);
}

TEST_F(Desktop, OwnedWindowStaysInFrontOfItsOwner) {
  const HWND frame = window(nullptr, {0, 0, 100, 100});
  const HWND back = owned(frame);
  const HWND front = owned(frame);
  desktop::raise(frame);
  EXPECT_EQ(GetWindow(frame, GW_HWNDFIRST), front);
  EXPECT_EQ(GetWindow(front, GW_HWNDNEXT), back);
  EXPECT_EQ(GetWindow(back, GW_HWNDNEXT), frame);
}

TEST_F(Desktop, DestroyedOwnerTakesItsOwnedWindowsWithIt) {
  const HWND frame = window(nullptr, {0, 0, 100, 100});
  const HWND tool = owned(frame);
  desktop::destroyWindow(frame);
  EXPECT_FALSE(desktop::destroyWindow(tool));
}

TEST_F(Desktop, OwnerMustBeAWindow) {
  EXPECT_EQ(owned(reinterpret_cast<HWND>(4711)), nullptr);
}

TEST_F(Desktop, SmallerTopLevelWindowBehindIsASiblingWithoutAParent) {
  const HWND small = window(nullptr, {0, 0, 20, 20});
  const HWND large = window(nullptr, {0, 0, 100, 100});
  EXPECT_EQ(WindowFromPoint({5, 5}), large);
  EXPECT_EQ(GetWindow(large, GW_HWNDNEXT), small);
  EXPECT_EQ(GetParent(small), nullptr);
}

TEST_F(Desktop, DesktopCountsUpdates) {
  const HWND frame = window(nullptr, {0, 0, 10, 10});
  EXPECT_EQ(UpdateWindow(frame), TRUE);
  EXPECT_EQ(UpdateWindow(frame), TRUE);
  EXPECT_EQ(desktop::updates(frame), 2u);
}

std::wstring classUnderPointer() {
  POINT point{};
  GetCursorPos(&point);
  wchar_t name[64] = {};
  GetClassNameW(WindowFromPoint(point), name, 64);
  return name;
}

TEST_F(Desktop, StandardDesktopHasAWindowForEachPlace) {
  desktop::makeStandardDesktop();
  EXPECT_EQ(classUnderPointer(), L"CadView");
  const std::vector<std::pair<std::string, std::wstring>> expected{
      {"tree", L"SysTreeView32"}, {"list", L"Button"}, {"edit", L"Edit"},
      {"qt", L"QWidget"},         {"none", L""},       {"canvas", L"CadView"}};
  for (const auto& [place, className] : expected) {
    EXPECT_TRUE(desktop::pointAt(place));
    EXPECT_EQ(classUnderPointer(), className) << place;
  }
  EXPECT_FALSE(desktop::pointAt("menu"));
  EXPECT_EQ(classUnderPointer(), L"CadView");
}

TEST_F(Desktop, StandardDesktopHasALargerGroupBoxInFrontOfItsList) {
  const auto made = desktop::makeStandardDesktop();
  desktop::pointAt("list");
  POINT point{};
  GetCursorPos(&point);
  EXPECT_EQ(WindowFromPoint(point), made.group);
  EXPECT_EQ(GetWindow(made.group, GW_HWNDNEXT), made.list);
  EXPECT_EQ(GetParent(made.list), GetParent(made.group));
  RECT rect{};
  GetWindowRect(made.list, &rect);
  EXPECT_EQ(PtInRect(&rect, point), TRUE);
}

}  // namespace
