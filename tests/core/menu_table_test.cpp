#include "common_sources/menu_table.h"

#include "tests/support/temp_folder.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

struct ValueCase {
  const char* value;
  std::optional<std::string_view> macro;
};

class MenuValues : public ::testing::TestWithParam<ValueCase> {};

TEST_P(MenuValues, ValueIsCutToTheMacro) {
  EXPECT_EQ(menuMacro(GetParam().value), GetParam().macro);
}

INSTANTIATE_TEST_SUITE_P(Values, MenuValues,
                         ::testing::Values(ValueCase{"{Line}_LINE|Draws a line", "_LINE"},
                                           ValueCase{"{Line}_LINE", "_LINE"}, ValueCase{"{A}x}y", "x}y"},
                                           ValueCase{"{A}x|y|z", "x"}, ValueCase{"{A}|help", ""},
                                           ValueCase{"no label", std::nullopt}, ValueCase{"", std::nullopt},
                                           ValueCase{"{only a label}", std::nullopt}, ValueCase{"}x", "x"}));

class MenuFile : public ::testing::Test {
 protected:
  std::optional<MenuTable> read(const std::string& text) {
    mFolder.write("autocad.mnu", text);
    return readMenuFile(mFolder.path("autocad.mnu"));
  }
  TempFolder mFolder;
};

TEST_F(MenuFile, ModesAndMacrosAreReadInFileOrder) {
  const auto table =
      read("[Modes]\nDrafting =\nModelling =\n\n[MenuBar]\nb = {B}_CIRCLE;;|help\na = {A}_LINE\n");
  ASSERT_TRUE(table);
  EXPECT_THAT(table->modes, ElementsAre("Drafting", "Modelling"));
  EXPECT_THAT(table->macros, ElementsAre("_CIRCLE;;", "_LINE"));
}

TEST_F(MenuFile, SkippedValueTakesNoNumber) {
  const auto table = read("[MenuBar]\n1 = {A}_LINE\n2 = separator\n3 = {C}_ARC\n");
  ASSERT_TRUE(table);
  EXPECT_THAT(table->macros, ElementsAre("_LINE", "_ARC"));
  EXPECT_THAT(table->modes, IsEmpty());
}

TEST_F(MenuFile, MissingFileIsNone) {
  EXPECT_FALSE(readMenuFile(mFolder.path("none.mnu")));
}

TEST_F(MenuFile, EmptyFileHasNothing) {
  const auto table = read("");
  ASSERT_TRUE(table);
  EXPECT_THAT(table->modes, IsEmpty());
  EXPECT_THAT(table->macros, IsEmpty());
}

TEST_F(MenuFile, MenuBarMayPrecedeTheModes) {
  const auto table = read("[MenuBar]\n1 = {A}_LINE\n\n[Modes]\nDrafting =\n");
  ASSERT_TRUE(table);
  EXPECT_THAT(table->modes, ElementsAre("Drafting"));
  EXPECT_THAT(table->macros, ElementsAre("_LINE"));
}

}  // namespace
