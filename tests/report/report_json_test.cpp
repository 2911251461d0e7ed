#include "workbench/report/report_json.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace workbench {
namespace {

std::string number(double value, int digits = 10) {
  std::string json;
  appendNumber(json, value, digits);
  return json;
}

std::string text(std::string_view value) {
  std::string json;
  appendText(json, value);
  return json;
}

TEST(ReportNumbers, AreWrittenInTheirShortestForm) {
  EXPECT_EQ(number(0), "0");
  EXPECT_EQ(number(12), "12");
  EXPECT_EQ(number(-0.5), "-0.5");
  EXPECT_EQ(number(0.1 + 0.2), "0.3");
  EXPECT_EQ(number(1234567.25), "1234567.25");
  EXPECT_EQ(number(1e-7), "1e-07");
  EXPECT_EQ(number(1e300), "1e+300");
}

TEST(ReportNumbers, KeepAsManyDigitsAsAreAskedFor) {
  EXPECT_EQ(number(1.0 / 3, 3), "0.333");
  EXPECT_EQ(number(4500000.123456789, 15), "4500000.12345679");
  EXPECT_EQ(number(0.1, 17), "0.10000000000000001");
}

TEST(ReportNumbers, MinusZeroIsZero) {
  EXPECT_EQ(number(-0.0), "0");
}

TEST(ReportNumbers, WhatIsNotFiniteIsNull) {
  EXPECT_EQ(number(std::numeric_limits<double>::quiet_NaN()), "null");
  EXPECT_EQ(number(std::numeric_limits<double>::infinity()), "null");
  EXPECT_EQ(number(-std::numeric_limits<double>::infinity()), "null");
}

TEST(ReportNumbers, TheLargestIntegersAreWhole) {
  std::string json;
  appendInteger(json, std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(json, "-9223372036854775808");
}

TEST(ReportTexts, QuotesBackslashesAndControlCharactersAreEscaped) {
  EXPECT_EQ(text("a\"b\\c\n\t\x1b\x7f"), R"("a\"b\\c\n\u0009\u001b\u007f")");
}

TEST(ReportTexts, NothingInATextIsMarkup) {
  EXPECT_EQ(text("</script><!--"), R"("\u003c/script>\u003c!--")");
}

TEST(ReportTexts, ATextWithAZeroByteIsKeptWhole) {
  EXPECT_EQ(text(std::string_view("a\0b", 3)), R"("a\u0000b")");
}

TEST(ReportTexts, CharactersBeyondAsciiStayAsTheyAre) {
  EXPECT_EQ(text("Gr\u00FC\u00DFe \u4E2D \U0001F600"), "\"Gr\u00FC\u00DFe \u4E2D \U0001F600\"");
}

TEST(ReportTexts, BytesThatAreNotUtf8BecomeTheReplacementCharacter) {
  const std::string_view broken[] = {"\xE4",      // a byte of an 8-bit code page
                                     "\xC0\xAF",  // overlong
                                     "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82"};
  const std::size_t bytes[] = {1, 2, 3, 4, 2};
  for (std::size_t i = 0; i < 5; ++i) {
    std::string expected = "\"";
    for (std::size_t k = 0; k < bytes[i]; ++k) expected += "\uFFFD";
    EXPECT_EQ(text(broken[i]), expected + '"') << "text " << i;
  }
}

TEST(ReportTexts, HtmlTextIsEscaped) {
  EXPECT_EQ(escapedForHtml("a < b & c > \"d\"\xFF"), "a &lt; b &amp; c &gt; \"d\"\uFFFD");
}

}  // namespace
}  // namespace workbench
