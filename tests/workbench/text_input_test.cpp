#include "workbench/text_input.h"

#include "workbench/input_error.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

TEST(TextInput, IntegersAreWholeAndAlone) {
  const std::pair<const char*, std::optional<long long>> table[] = {
      {"0", 0},
      {"-12", -12},
      {"+7", 7},
      {"", std::nullopt},
      {"+", std::nullopt},
      {"+-7", std::nullopt},
      {"1.0", std::nullopt},
      {" 1", std::nullopt},
      {"1x", std::nullopt},
      {"9223372036854775807", 9223372036854775807LL},
      {"9223372036854775808", std::nullopt}};
  for (const auto& [text, value] : table) EXPECT_EQ(parseInteger(text), value) << text;
}

TEST(TextInput, RealsAreFiniteAndAlone) {
  const std::pair<const char*, std::optional<double>> table[] = {
      {"0.5", 0.5},          {"-1e3", -1000.0},     {"+.25", 0.25},          {"1.", 1.0},
      {"nan", std::nullopt}, {"inf", std::nullopt}, {"1e999", std::nullopt}, {"1,5", std::nullopt},
      {"", std::nullopt},    {"0x10", std::nullopt}};
  for (const auto& [text, value] : table) EXPECT_EQ(parseReal(text), value) << text;
}

TEST(TextInput, HexHasNoSignAndNoPrefix) {
  EXPECT_EQ(parseHex("2aF"), 0x2AFu);
  EXPECT_EQ(parseHex("-1"), std::nullopt);
  EXPECT_EQ(parseHex("0x1"), std::nullopt);
}

TEST(TextInput, OtherBytesAreTakenAsLatin1) {
  EXPECT_EQ(toUtf8(std::string_view("Stra\xDF"
                                    "e")),
            "Straße");
  EXPECT_EQ(toUtf8(std::string_view("Straße €")), "Straße €");
  EXPECT_EQ(toUtf8(std::string_view("\xC0\xAF")), "À¯");
}

TEST(TextInput, WideTextConvertsBothWays) {
  EXPECT_EQ(toUtf8(toWide("aß€😀")), "aß€😀");
  EXPECT_EQ(toUtf8(std::wstring(1, static_cast<wchar_t>(0xD800))), "\xEF\xBF\xBD");
  EXPECT_EQ(toWide("\xFFz"), L"\xFFFDz");
}

TEST(TextInput, QuotesStayOnOneLineAndAreCut) {
  EXPECT_EQ(inQuotes("a\nb\x1B"), "\"a\\x0Ab\\x1B\"");
  EXPECT_EQ(inQuotes(std::string(41, 'a')), "\"" + std::string(40, 'a') + "...\"");
}

TEST(TextInput, FolderCannotBeRead) {
  try {
    readFile("/tmp", "a drawing");
    FAIL();
  } catch (const InputError& error) {
    EXPECT_STREQ(error.what(), "/tmp: expected a drawing, found a folder");
  }
}

}  // namespace
}  // namespace workbench
