#include "common_sources/command_text.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

TEST(CommandText, MacroIsSplitAtSemicolons) {
  EXPECT_THAT(splitMacro("_LINE"), ElementsAre("_LINE"));
  EXPECT_THAT(splitMacro("_LINE;0,0;1,1"), ElementsAre("_LINE", "0,0", "1,1"));
}

TEST(CommandText, TwoSemicolonsHoldAnEmptyToken) {
  EXPECT_THAT(splitMacro("_CIRCLE;;"), ElementsAre("_CIRCLE", ""));
  EXPECT_THAT(splitMacro("a;;b"), ElementsAre("a", "", "b"));
  EXPECT_THAT(splitMacro(";a"), ElementsAre("", "a"));
  EXPECT_THAT(splitMacro(";"), ElementsAre(""));
}

TEST(CommandText, LastSemicolonAddsNoToken) {
  EXPECT_THAT(splitMacro("a;"), ElementsAre("a"));
}

TEST(CommandText, EmptyMacroHasNoToken) {
  EXPECT_THAT(splitMacro(""), IsEmpty());
}

TEST(CommandText, CommandEndsInANewline) {
  EXPECT_EQ(commandOfToken("_LINE"), L"_LINE\n");
}

TEST(CommandText, EmptyTokenIsEnter) {
  EXPECT_EQ(commandOfToken(""), L"\n");
}

TEST(CommandText, MenuMacroIsEvaluatedWithItsPrefix) {
  EXPECT_EQ(commandOfToken("M=$(if,$(eq,1,1),_LINE)"), L"(command (menucmd \"M=$(if,$(eq,1,1),_LINE)\"))\n");
  EXPECT_EQ(commandOfToken("M="), L"(command (menucmd \"M=\"))\n");
}

TEST(CommandText, LetterMAloneIsACommand) {
  EXPECT_EQ(commandOfToken("M"), L"M\n");
  EXPECT_EQ(commandOfToken("MM="), L"MM=\n");
}

TEST(CommandText, NetloadTakesThePathWithForwardSlashes) {
  EXPECT_EQ(netloadCommand(L"C:\\My Files\\a.dll"), L"(command \"netload\" \"C:/My Files/a.dll\")\n");
}

TEST(CommandText, EightBitCharactersAreThoseOfTheCodePage) {
  EXPECT_EQ(commandOfToken("\xC4\x80"), L"\u00C4\u20AC\n");
}

}  // namespace
