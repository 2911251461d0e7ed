#include "config/cnfg_line.h"

#include <gtest/gtest.h>

#include <string>

using Kind = CnfgLine::Kind;

namespace {

struct LineCase {
  const char* name;
  std::string_view line;
  Kind kind;
  std::string_view leading, section, key, separator, value, trailing;
};

void PrintTo(const LineCase& lineCase, std::ostream* streamP) {
  *streamP << lineCase.line;
}

class CnfgLineKinds : public testing::TestWithParam<LineCase> {};

TEST_P(CnfgLineKinds, LineGivesItsPieces) {
  const LineCase& expected = GetParam();
  const CnfgLine line = CnfgLine::split(expected.line);
  EXPECT_EQ(line.kind, expected.kind);
  EXPECT_EQ(line.leading, expected.leading);
  EXPECT_EQ(line.section, expected.section);
  EXPECT_EQ(line.key, expected.key);
  EXPECT_EQ(line.separator, expected.separator);
  EXPECT_EQ(line.value, expected.value);
  EXPECT_EQ(line.trailing, expected.trailing);
}

using namespace std::string_view_literals;

INSTANTIATE_TEST_SUITE_P(
    Grammar, CnfgLineKinds,
    testing::Values(
        LineCase{"Empty", "", Kind::kBlank, "", "", "", "", "", ""},
        LineCase{"OnlyBlanks", " \t ", Kind::kBlank, "", "", "", "", "", ""},
        LineCase{"Comment", "# text = 1", Kind::kComment, "", "", "", "", "", "# text = 1"},
        LineCase{"IndentedComment", " \t# text", Kind::kComment, " \t", "", "", "", "", "# text"},
        LineCase{"Header", "[PROGRAM]", Kind::kHeader, "", "PROGRAM", "", "", "", ""},
        LineCase{"HeaderWithSurroundings", "\t[ A ] # x", Kind::kHeader, "\t", " A ", "", "", "", " # x"},
        LineCase{"HeaderEndsAtFirstBracket", "[a]b]", Kind::kHeader, "", "a", "", "", "", "b]"},
        LineCase{"EmptyHeader", "[]", Kind::kHeader, "", "", "", "", "", ""},
        LineCase{"BrokenHeader", "  [PROGRAM = 1", Kind::kBrokenHeader, "", "", "", "", "", ""},
        LineCase{"Parameter", "key=value", Kind::kParameter, "", "", "key", "=", "value", ""},
        LineCase{"BlankIsNoSeparator", "key = value", Kind::kParameter, "", "", "key", "=", " value", ""},
        LineCase{"TabEndsTheKey", "key\t=\tvalue", Kind::kParameter, "", "", "key", "\t=\t", "value", ""},
        LineCase{"OnlyBlanksAreCutFromTheKey", "a b  =1", Kind::kParameter, "", "", "a b", "=", "1", ""},
        LineCase{"SecondEqualsSign", "key = = 5", Kind::kParameter, "", "", "key", "=", " = 5", ""},
        LineCase{"RunOfEqualsSigns", "key==5", Kind::kParameter, "", "", "key", "==", "5", ""},
        LineCase{"KeyAlone", "key", Kind::kParameter, "", "", "key", "", "", ""},
        LineCase{"HashEndsAValue", "key=a#b=c", Kind::kParameter, "", "", "key", "=", "a", "#b=c"},
        LineCase{"ValueOfNothingButComment", "key=#b", Kind::kParameter, "", "", "key", "=", "", "#b"},
        LineCase{"CarriageReturnEndsAValue", "key=a\rb", Kind::kParameter, "", "", "key", "=", "a", "\rb"},
        LineCase{"LineFeedEndsAValue", "key=a\nb", Kind::kParameter, "", "", "key", "=", "a", "\nb"},
        LineCase{"NoKey", "=value", Kind::kParameter, "", "", "", "=", "value", ""},
        LineCase{"NulBytes", "k\0y=v\0"sv, Kind::kParameter, "", "", "k\0y"sv, "=", "v\0"sv, ""}),
    [](const auto& testCase) { return std::string(testCase.param.name); });

TEST(CnfgLine, LineKeepsTheBlanksAfterTheKey) {
  EXPECT_EQ(CnfgLine::split("key  = 1").keyBlanks, "  ");
}

TEST(CnfgLine, SectionOfALineIsItsHeadersName) {
  EXPECT_EQ(CnfgLine::sectionOf(" \t[PROGRAM] x"), "PROGRAM");
  EXPECT_EQ(CnfgLine::sectionOf("[PROGRAM"), "");
  EXPECT_EQ(CnfgLine::sectionOf("x[PROGRAM]"), "");
  EXPECT_EQ(CnfgLine::sectionOf(""), "");
}

TEST(CnfgLine, TrimmingCutsBlanksAndTabsAtBothEnds) {
  EXPECT_EQ(CnfgLine::trimmed(" \t a b\t "), "a b");
  EXPECT_EQ(CnfgLine::trimmed(" \t "), "");
  EXPECT_EQ(CnfgLine::trimmed(""), "");
}

TEST(CnfgLine, TrimmingDropsOneNulAtTheEndFirst) {
  EXPECT_EQ(CnfgLine::trimmed("a \0"sv), "a");
  EXPECT_EQ(CnfgLine::trimmed("a\0\0"sv), "a\0"sv);
}

}  // namespace
