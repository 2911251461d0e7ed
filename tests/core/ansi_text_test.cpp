#include "common_sources/ansi_text.h"

#include <gtest/gtest.h>

namespace {

TEST(AnsiText, BytesPastSevenBitsAreThoseOfTheCodePage) {
  EXPECT_EQ(wideFromAnsi("M\xFCller \x80"), L"M\u00FCller \u20AC");
  EXPECT_EQ(ansiFromWide(L"M\u00FCller \u20AC"), "M\xFCller \x80");
}

TEST(AnsiText, WhatTheCodePageLacksBecomesAQuestionMark) {
  EXPECT_EQ(ansiFromWide(L"a\u4E2Db"), "a?b");
}

TEST(AnsiText, TextOfNothingIsEmpty) {
  EXPECT_EQ(wideFromAnsi(""), L"");
  EXPECT_EQ(ansiFromWide(L""), "");
}

}  // namespace
