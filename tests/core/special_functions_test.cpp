#include "device/special_functions.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(SpecialFunctions, EveryCodeHasItsNameAndCommand) {
  const SpecialFunction expected[] = {
      {0x20009, "front", L"'_-VIEW _FRONT "},   {0x2000A, "right", L"'_-VIEW _RIGHT "},
      {0x2000B, "top", L"'_-VIEW _TOP "},       {0x2000C, "fit", L"'_ZOOM _ALL "},
      {0x20016, "back", L"'_-VIEW _BACK "},     {0x20017, "left", L"'_-VIEW _LEFT "},
      {0x20018, "bottom", L"'_-VIEW _BOTTOM "},
  };
  for (const SpecialFunction& function : expected) {
    const SpecialFunction* const foundP = findSpecialFunction(function.eventCode);
    ASSERT_NE(foundP, nullptr) << function.nameP;
    EXPECT_EQ(std::string(foundP->nameP), function.nameP);
    EXPECT_EQ(std::wstring(foundP->commandP), function.commandP);
  }
  EXPECT_EQ(std::size(kSpecialFunctions), std::size(expected));
}

TEST(SpecialFunctions, OtherCodesAreNone) {
  for (const std::int32_t code : {0, 1, 0x20008, 0x2000D, 0x20013, 0x20015, 0x20019, 0x20020})
    EXPECT_EQ(findSpecialFunction(code), nullptr) << code;
}

}  // namespace
