#include "workbench/report/menu_functions.h"

#include "workbench/text_input.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

std::string labelsAndMacros(std::string_view menuFile) {
  std::string text;
  for (const ReportFunction& function : menuFunctions(menuFile))
    text += function.label + ":" + function.macro + "\n";
  return text;
}

TEST(MenuFunctions, ItemsWithLabelAndMacroAreNumbered) {
  EXPECT_EQ(labelsAndMacros("[MenuBar]\na = {All}_ZOOM;_ALL|Shows everything\nb = Zoom\nc = {Empty}\n"
                            "d =\ne = {Two} }_LINE\n"),
            "All:_ZOOM;_ALL\nTwo: }_LINE\n");
}

TEST(MenuFunctions, OnlyTheMenuBarSectionIsRead) {
  EXPECT_EQ(labelsAndMacros("[Modes]\nx = {A}B\n\n[MenuBar] and more\ny\t{C}D # note\r\n[Other]\nz = {E}F\n"),
            "C:D\n");
}

TEST(MenuFunctions, BlankLineEndsTheSection) {
  EXPECT_EQ(labelsAndMacros("[MenuBar]\n# a note\na = {A}B\n\nb = {C}D\n"), "A:B\n");
  EXPECT_EQ(labelsAndMacros("[MenuBar]\na = {A}B\n  # indented\nb = {C}D"), "A:B\n");
}

TEST(MenuFunctions, BlankBeforeAKeyIsIgnored) {
  EXPECT_EQ(labelsAndMacros("[MenuBar]\n\ta = {A}B\n  c\t{C}D\n= {E}F\ng = {G}H"), "A:B\nC:D\n");
}

TEST(MenuFunctions, MissingMenuHasNoFunctions) {
  EXPECT_EQ(labelsAndMacros(""), "");
  EXPECT_EQ(labelsAndMacros("[MenuBar]"), "");
  EXPECT_EQ(labelsAndMacros("[MenuBar\na = {A}B"), "") << "a header without its end";
}

}  // namespace
}  // namespace workbench
