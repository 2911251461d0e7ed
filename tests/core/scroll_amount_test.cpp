#include "common_sources/scroll_amount.h"

#include <gtest/gtest.h>

namespace {

TEST(ScrollAmount, ClassNamesAreFoundAsParts) {
  for (const char* const name :
       {"SysTreeView32", "WindowsForms10.SysTreeView32.app", "TreeView", "MyTreeViewCtrl", "SysListView32",
        "ListBox", "ComboListBox", "Edit", "RichEdit20W"})
    EXPECT_EQ(scrollKind(name), ScrollKind::kScrollBar) << name;
}

TEST(ScrollAmount, QtWidgetIsRecognisedByItsWholeName) {
  EXPECT_EQ(scrollKind("QWidget"), ScrollKind::kWheel);
  EXPECT_EQ(scrollKind("QWidgetWindow"), ScrollKind::kNone);
  EXPECT_EQ(scrollKind("MyQWidget"), ScrollKind::kNone);
}

TEST(ScrollAmount, OtherClassesAreNotHandled) {
  for (const char* const name : {"", "edit", "listbox", "Button", "AfxMDIFrame110u"})
    EXPECT_EQ(scrollKind(name), ScrollKind::kNone) << name;
}

TEST(ScrollAmount, TiltCountsWhenItIsStrongerThanThePush) {
  EXPECT_EQ(scrollAmount(0, 300, 100).vertical, -300);
  EXPECT_EQ(scrollAmount(0, -300, 100).vertical, 300);
  EXPECT_EQ(scrollAmount(0, 100, 100).vertical, 100);
  EXPECT_EQ(scrollAmount(0, 50, -100).vertical, -100);
  EXPECT_EQ(scrollAmount(7, 0, 0).horizontal, 7);
}

TEST(ScrollAmount, SmallestValuesHaveAMagnitude) {
  EXPECT_EQ(scrollAmount(0, -32768, 0).vertical, 32768);
  EXPECT_EQ(strength({-32768, 5}), 32768);
}

TEST(ScrollAmount, BarIsUsableWithARangeAndAPage) {
  EXPECT_TRUE(isUsable({0, 10, 1, 0}));
  EXPECT_FALSE(isUsable({0, 0, 1, 0}));
  EXPECT_FALSE(isUsable({5, 5, 1, 0}));
  EXPECT_FALSE(isUsable({-1, 10, 1, 0}));
  EXPECT_FALSE(isUsable({-5, -1, 1, 0}));
  EXPECT_FALSE(isUsable({0, 10, 0, 0}));
}

TEST(ScrollAmount, LongListsScrollMoreLinesAPass) {
  EXPECT_EQ(lineCount({0, 2000, 1, 0}), 10);
  EXPECT_EQ(lineCount({0, 1000, 1, 0}), 10);
  EXPECT_EQ(lineCount({0, 999, 1, 0}), 9);
  EXPECT_EQ(lineCount({0, 150, 1, 0}), 1);
  EXPECT_EQ(lineCount({0, 20, 1, 0}), 1);
}

TEST(ScrollAmount, EndsOfTheRangeStopTheScrolling) {
  EXPECT_FALSE(isScrollable({0, 100, 10, 0}, -1));
  EXPECT_TRUE(isScrollable({0, 100, 10, 1}, -1));
  EXPECT_TRUE(isScrollable({0, 100, 10, 90}, 1));
  EXPECT_FALSE(isScrollable({0, 100, 10, 91}, 1));
}

TEST(ScrollAmount, WaitShrinksWithTheDeflection) {
  EXPECT_EQ(scrollWaitMs({0, 0}), 150);
  EXPECT_EQ(scrollWaitMs({0, 1}), 150);
  EXPECT_EQ(scrollWaitMs({0, -100}), 100);
  EXPECT_EQ(scrollWaitMs({201, 100}), 50);
  EXPECT_EQ(scrollWaitMs({0, 298}), 1);
  EXPECT_EQ(scrollWaitMs({0, 300}), 1);
  EXPECT_EQ(scrollWaitMs({0, -32768}), 1);
}

TEST(ScrollAmount, ShortListsWaitLonger) {
  EXPECT_EQ(shortListWaitMs({0, 10, 1, 0}), 40);
  EXPECT_EQ(shortListWaitMs({0, 50, 1, 0}), 0);
  EXPECT_EQ(shortListWaitMs({0, 2000, 1, 0}), 0);
}

}  // namespace
