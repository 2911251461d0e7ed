#include "common_sources/window_search.h"

#include "standin_desktop.h"

#include <gtest/gtest.h>

namespace desktop = standin::desktop;

namespace {

class WindowSearch : public ::testing::Test {
 protected:
  WindowSearch() { desktop::clear(); }
  ~WindowSearch() override { desktop::clear(); }
  static HWND window(HWND parent, RECT rect, bool isShown = true) {
    return desktop::createWindow({L"W", parent, rect, isShown, {}, {}, false});
  }
};

TEST_F(WindowSearch, EmptyScreenHasNoWindow) {
  EXPECT_EQ(smallestWindowAt({5, 5}), nullptr);
}

TEST_F(WindowSearch, WindowWithoutAParentIsTheResult) {
  const HWND frame = window(nullptr, {0, 0, 100, 100});
  EXPECT_EQ(smallestWindowAt({5, 5}), frame);
}

TEST_F(WindowSearch, SmallerTopLevelWindowBelowIsNotTheResult) {
  window(nullptr, {0, 0, 20, 20});
  const HWND front = window(nullptr, {0, 0, 100, 100});
  EXPECT_EQ(smallestWindowAt({5, 5}), front);
}

TEST_F(WindowSearch, SmallerSiblingBelowIsFound) {
  const HWND frame = window(nullptr, {0, 0, 100, 100});
  window(frame, {0, 0, 80, 80});
  const HWND small = window(frame, {0, 0, 20, 20});
  EXPECT_EQ(smallestWindowAt({5, 5}), small);
}

TEST_F(WindowSearch, SmallestOfSeveralIsFound) {
  const HWND frame = window(nullptr, {0, 0, 100, 100});
  window(frame, {0, 0, 80, 80});
  window(frame, {0, 0, 40, 40});
  const HWND small = window(frame, {0, 0, 10, 10});
  window(frame, {0, 0, 30, 30});
  EXPECT_EQ(smallestWindowAt({5, 5}), small);
}

TEST_F(WindowSearch, EqualSizeDoesNotReplaceTheFirst) {
  const HWND frame = window(nullptr, {0, 0, 100, 100});
  const HWND first = window(frame, {0, 0, 20, 20});
  window(frame, {2, 2, 22, 22});
  EXPECT_EQ(smallestWindowAt({5, 5}), first);
}

TEST_F(WindowSearch, SizeOfAHugeWindowIsNotTakenForASmallOne) {
  const HWND frame = window(nullptr, {0, 0, 100, 100});
  const HWND first = window(frame, {0, 0, 20, 20});
  window(frame, {0, 0, 65536, 65536});
  EXPECT_EQ(smallestWindowAt({5, 5}), first) << "the product of the sides has 33 bits";
}

TEST_F(WindowSearch, HiddenSiblingIsPassedOver) {
  const HWND frame = window(nullptr, {0, 0, 100, 100});
  const HWND large = window(frame, {0, 0, 80, 80});
  window(frame, {0, 0, 20, 20}, false);
  EXPECT_EQ(smallestWindowAt({5, 5}), large);
}

TEST_F(WindowSearch, DisabledSiblingIsFoundAsAVisibleOne) {
  const HWND frame = window(nullptr, {0, 0, 100, 100});
  window(frame, {0, 0, 80, 80});
  const HWND small = window(frame, {0, 0, 20, 20});
  ASSERT_TRUE(desktop::setEnabled(small, false));
  EXPECT_EQ(smallestWindowAt({5, 5}), small);
}

TEST_F(WindowSearch, OwnedWindowBelowIsFoundWhenItHasTheSameOwner) {
  const HWND frame = window(nullptr, {0, 0, 200, 200});
  const HWND other = window(nullptr, {0, 0, 10, 10});
  const auto owned = [](HWND owner, RECT rect) {
    desktop::WindowSpec spec{L"W", nullptr, rect, true, {}, {}, false};
    spec.owner = owner;
    return desktop::createWindow(spec);
  };
  owned(other, {0, 0, 15, 15});
  const HWND small = owned(frame, {0, 0, 20, 20});
  const HWND large = owned(frame, {0, 0, 50, 50});
  ASSERT_EQ(WindowFromPoint({5, 5}), large);
  EXPECT_EQ(smallestWindowAt({5, 5}), small);
}

TEST_F(WindowSearch, SiblingElsewhereIsPassedOver) {
  const HWND frame = window(nullptr, {0, 0, 100, 100});
  const HWND large = window(frame, {0, 0, 80, 80});
  window(frame, {50, 50, 60, 60});
  EXPECT_EQ(smallestWindowAt({5, 5}), large);
}

TEST_F(WindowSearch, ChildrenOfTheNewBestAreSearchedFromTheFirst) {
  const HWND frame = window(nullptr, {0, 0, 100, 100});
  window(frame, {0, 0, 80, 80});
  const HWND panel = window(frame, {0, 0, 40, 40});
  const HWND list = window(panel, {0, 0, 30, 30});
  const HWND field = window(list, {0, 0, 10, 10});
  EXPECT_EQ(smallestWindowAt({5, 5}), field);
}

}  // namespace
