#include "packaging/lm_check/menu_check.h"

#include "tests/lm_check/finding_texts.h"
#include "tests/support/temp_folder.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using tests::textsOf;

const std::string kModes = "[Modes]\nAutoCAD = 0\n\n";

std::vector<std::string> found(const std::string& text) {
  const TempFolder folder;
  return textsOf(checkMenu(folder.write("autocad.mnu", text).string()));
}

TEST(MenuCheck, WholeFileHasNoFindings) {
  EXPECT_THAT(found(kModes + "[MenuBar]\n1 = {Line}_line\n2 = {Zoom}_zoom;_all|whole drawing\n"), IsEmpty());
}

TEST(MenuCheck, MissingFileIsNamed) {
  EXPECT_THAT(
      textsOf(checkMenu("/nowhere/autocad.mnu")),
      ElementsAre(
          "Menu file: there is no readable file '/nowhere/autocad.mnu', so that keys with menu items do "
          "nothing. It is written when AutoCAD starts with the module and the menu exporter beside it."));
}

TEST(MenuCheck, FileWithoutModesIsNamed) {
  EXPECT_THAT(
      found("[MenuBar]\n1 = {Line}_line\n"),
      ElementsAre(
          "Menu file: it has no section [Modes] with an entry, so that the module reads it again ten times "
          "a second; let the menu exporter write it anew."));
}

TEST(MenuCheck, FileWithoutMacrosIsNamed) {
  EXPECT_THAT(found(kModes),
              ElementsAre("Menu file: no entry of [MenuBar] has a macro, so that keys with menu items do "
                          "nothing; let the menu exporter write it anew."));
}

TEST(MenuCheck, EntriesWithoutNumberAreNamed) {
  EXPECT_THAT(
      found(kModes + "[MenuBar]\n1 = {Line}_line\n2 = _circle\n3 = {Arc}\n4 = {Zoom}_zoom\n"),
      ElementsAre(
          "Menu file: line 6: '2' has no text in braces with a macro behind it: it takes no number, and "
          "the items after it have the numbers of those before them.",
          "Menu file: line 7: '3' has no text in braces with a macro behind it: it takes no number, and "
          "the items after it have the numbers of those before them."));
}

TEST(MenuCheck, EntriesAfterAnEmptyLineAreNamed) {
  EXPECT_THAT(
      found(kModes + "[MenuBar]\n1 = {Line}_line\n\n2 = {Arc}_arc\n"),
      ElementsAre(
          "Menu file: line 7: '2' comes after a line that ends the section for the module, which does not "
          "read it; let the menu exporter write the file anew."));
}

TEST(MenuCheck, Utf8IsNamed) {
  EXPECT_THAT(
      found(kModes + "[MenuBar]\n1 = {K\xC3\xBCrzen}_insert;k\xC3\xBCrzen\n"),
      ElementsAre(
          "Menu file: it has texts in UTF-8, which the module reads by Windows' code page, so that their "
          "macros send wrong letters; let the menu exporter write it anew."));
}

TEST(MenuCheck, LettersOfACodePageAreNoFinding) {
  EXPECT_THAT(found(kModes + "[MenuBar]\n1 = {K\xFCrzen}_insert;k\xFCrzen\n"), IsEmpty());
}

TEST(MenuCheck, Utf16IsNamed) {
  std::string text("\xFF\xFE", 2);
  for (const char c : kModes) (text += c) += '\0';
  EXPECT_THAT(
      found(text),
      ElementsAre("Menu file: it is stored as Unicode (UTF-16), of which the module can read nothing; "
                  "let the menu exporter write it anew."));
}

}  // namespace
