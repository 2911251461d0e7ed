#include "host_fixture.h"

// clang-format off
#include "adscodes.h"
#include "acutads.h"
// clang-format on

namespace {

using namespace standin;
using Printing = HostTest;

TEST_F(Printing, PrintfReportsTheFormattedText) {
  EXPECT_EQ(acutPrintf(L"\nx = %d, %.2f%%\n", 7, 0.5), RTNORM);
  EXPECT_EQ(mHost.mPrinted, std::vector<std::wstring>{L"\nx = 7, 0.50%\n"});
  EXPECT_EQ(host::counts().modulePrints, 1u);
}

TEST_F(Printing, PrintfTakesWideStrings) {
  acutPrintf(L"%s|%ls|%-4s|", L"a\u00e4", L"b", L"c");
  EXPECT_EQ(mHost.mPrinted, std::vector<std::wstring>{L"a\u00e4|b|c   |"});
}

TEST_F(Printing, PrintfRefusesATextThatIsTooLong) {
  const std::wstring longText(100000, L'x');
  EXPECT_EQ(acutPrintf(L"%s", longText.c_str()), RTERROR);
  EXPECT_EQ(acutPrintf(nullptr), RTERROR);
  EXPECT_TRUE(mHost.mPrinted.empty());
}

}  // namespace
