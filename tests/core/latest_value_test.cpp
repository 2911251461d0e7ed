#include "common_sources/latest_value.h"

#include <gtest/gtest.h>

#include <array>
#include <thread>

namespace {

using Six = std::array<int, 6>;

TEST(LatestValue, ValueIsTheDefaultBeforeTheFirstStore) {
  LatestValue<int> value;
  EXPECT_EQ(value.load(), 0);
}

TEST(LatestValue, NewestValueIsKept) {
  LatestValue<int> value;
  value.store(1);
  value.store(2);
  value.store(3);
  EXPECT_EQ(value.load(), 3);
  EXPECT_EQ(value.load(), 3);
}

TEST(LatestValue, StoresAndLoadsInTurnSeeEveryValue) {
  LatestValue<int> value;
  for (int i = 1; i < 10; ++i) {
    value.store(i);
    EXPECT_EQ(value.load(), i);
  }
}

TEST(LatestValue, ReaderNeverSeesAMixtureAndNeverGoesBack) {
  constexpr int kCount = 200000;
  LatestValue<Six> value;
  std::thread writer([&] {
    for (int i = 1; i <= kCount; ++i) value.store({i, i, i, i, i, i});
  });
  int last = 0;
  int mixtures = 0;
  while (last < kCount) {
    const Six seen = value.load();
    for (const int number : seen) mixtures += number != seen[0];
    ASSERT_GE(seen[0], last);
    last = seen[0];
  }
  writer.join();
  EXPECT_EQ(mixtures, 0);
}

}  // namespace
