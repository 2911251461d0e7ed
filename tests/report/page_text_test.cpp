#include "workbench/report/page_text.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <limits>

namespace workbench {
namespace {

std::string number(double value, int digits = 10) {
  return scriptJson(rounded(value, digits));
}

std::string text(std::string_view value) {
  return scriptJson(value);
}

TEST(PageText, NumbersTakeTheirShortestForm) {
  EXPECT_EQ(number(-0.5), "-0.5");
  EXPECT_EQ(number(0.1 + 0.2), "0.3");
  EXPECT_EQ(number(1234567.25), "1234567.25");
  EXPECT_EQ(number(1e-7), "1e-07");
  EXPECT_EQ(number(1e300), "1e+300");
}

TEST(PageText, NumbersKeepAsManyDigitsAsAreAskedFor) {
  EXPECT_EQ(number(1.0 / 3, 3), "0.333");
  EXPECT_EQ(number(4500000.123456789, 15), "4500000.12345679");
  EXPECT_EQ(rounded(0.1, 17), 0.1);
}

TEST(PageText, MinusZeroBecomesZero) {
  EXPECT_FALSE(std::signbit(rounded(-0.0, 10)));
}

TEST(PageText, NumbersThatAreNotFiniteBecomeNull) {
  EXPECT_EQ(number(std::numeric_limits<double>::quiet_NaN()), "null");
  EXPECT_EQ(number(std::numeric_limits<double>::infinity()), "null");
  EXPECT_EQ(number(-std::numeric_limits<double>::infinity()), "null");
}

TEST(PageText, JsonEscapesQuotesBackslashesAndControlCharacters) {
  EXPECT_EQ(text("a\"b\\c\n\t\x1b"), R"("a\"b\\c\n\t\u001b")");
}

TEST(PageText, JsonHoldsNoMarkup) {
  EXPECT_EQ(text("</script><!--"), R"("\u003c/script>\u003c!--")");
}

TEST(PageText, JsonKeepsATextWithAZeroByteWhole) {
  EXPECT_EQ(text(std::string_view("a\0b", 3)), R"("a\u0000b")");
}

TEST(PageText, JsonKeepsCharactersBeyondAscii) {
  EXPECT_EQ(text("Gr\u00FC\u00DFe \u4E2D \U0001F600"), "\"Gr\u00FC\u00DFe \u4E2D \U0001F600\"");
}

TEST(PageText, JsonReplacesBytesThatAreNotUtf8) {
  // A byte of an 8-bit code page, an overlong form, a surrogate, a code beyond the last, a cut character.
  for (const char* const broken : {"\xE4", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82"}) {
    const std::string whole = text("a" + std::string(broken) + "b");
    EXPECT_EQ(whole.substr(0, 5), "\"a\uFFFD");
    EXPECT_EQ(whole.substr(whole.size() - 2), "b\"");
    EXPECT_EQ(nlohmann::json::parse(whole).dump(), whole);
  }
}

TEST(PageText, HtmlEscapesMarkupAndReplacesWhatIsNotUtf8) {
  EXPECT_EQ(escapedForHtml("a < b & c > \"d\"\xFF"), "a &lt; b &amp; c &gt; \"d\"\uFFFD");
}

}  // namespace
}  // namespace workbench
