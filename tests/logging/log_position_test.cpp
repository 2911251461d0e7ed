#include "LM_Daemon/src/log_position.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

std::string positionText(std::string_view file, int line, std::string_view className,
                         std::string_view method) {
  return std::string(LogPosition(file, line, className, method).text());
}

TEST(LogPosition, PositionHasColumnsOfFixedWidth) {
  EXPECT_EQ(positionText("c:\\src\\proxy.cpp", 42, "Proxy", "Proxy::run"),
            "       proxy.cpp|   42| Proxy::Proxy::run               ");
}

TEST(LogPosition, PositionShowsTheWholePathWithoutABackslash) {
  EXPECT_EQ(positionText("src/proxy.cpp", 1, "A", "b").substr(0, 18), "   src/proxy.cpp| ");
}

TEST(LogPosition, AFileNameOfSixteenCharactersFits) {
  EXPECT_EQ(positionText("0123456789AB.cpp", 1, "A", "b").substr(0, 16), "0123456789AB.cpp");
}

TEST(LogPosition, AFileNameOfSeventeenCharactersShowsItsEnd) {
  EXPECT_EQ(positionText("x\\0123456789ABC.cpp", 1, "A", "b").substr(0, 16), "*23456789ABC.cpp");
}

TEST(LogPosition, PositionDoublesTheClassOfAQualifiedMethod) {
  EXPECT_EQ(positionText("a.cpp", 1, "Cnfg", "Cnfg::open").substr(24), "Cnfg::Cnfg::open                ");
}

TEST(LogPosition, AMethodOfThirtyTwoCharactersFits) {
  const std::string method(32 - 3, 'm');
  EXPECT_EQ(positionText("a.cpp", 1, "C", method).substr(24), "C::" + method);
}

TEST(LogPosition, ALongerMethodShowsItsEnd) {
  EXPECT_EQ(positionText("a.cpp", 1, "AutoCadProxy", "AutoCadProxy::execApplFunction").substr(24),
            "*:AutoCadProxy::execApplFunction");
}

TEST(LogPosition, ALineNumberTakesTheRoomItNeeds) {
  EXPECT_EQ(positionText("a.cpp", 12345, "A", "b").substr(16, 9), "| 12345| ");
  EXPECT_EQ(positionText("a.cpp", std::numeric_limits<int>::min(), "A", "b").substr(16, 15),
            "| -2147483648| ");
}

TEST(LogPosition, ANegativeLineNumberHasItsSign) {
  EXPECT_EQ(positionText("a.cpp", -5, "A", "b").substr(16, 8), "|   -5| ");
  EXPECT_EQ(positionText("a.cpp", 0, "A", "b").substr(16, 8), "|    0| ");
}

}  // namespace
