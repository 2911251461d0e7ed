// How much of what is logged before the log is opened is kept, to the entry and to the byte.
#include "LM_Daemon/src/early_entries.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::Pair;
using testing::SizeIs;

constexpr std::size_t kMaxSize = 65536;

class EarlyEntriesLimits : public testing::Test {
 protected:
  void keep(std::string_view source, std::string_view line) {
    mEntriesP->keep(LogLevel::kInfo, source, line);
  }

  /// Source file and line of each entry.
  std::vector<std::pair<std::string, std::string>> released() {
    std::vector<std::pair<std::string, std::string>> entries;
    mEntriesP->release([&entries](LogLevel, std::string_view source, std::string_view line) {
      entries.emplace_back(source, line);
    });
    return entries;
  }

  static std::string filler(std::size_t size) { return std::string(size, 'x'); }

  std::unique_ptr<EarlyEntries> mEntriesP = std::make_unique<EarlyEntries>();
};

TEST_F(EarlyEntriesLimits, SourceAndLineOfEachEntryAreKeptApart) {
  keep("a.cpp", "first\n");
  keep("", "no source\n");
  keep("c.cpp", "");
  EXPECT_THAT(released(), ElementsAre(Pair("a.cpp", "first\n"), Pair("", "no source\n"), Pair("c.cpp", "")));
}

TEST_F(EarlyEntriesLimits, EntryThatFillsTheRoomIsKept) {
  keep("ab", filler(kMaxSize - 2));
  EXPECT_THAT(released(), SizeIs(1));
}

TEST_F(EarlyEntriesLimits, EntryOfOneByteTooManyIsDropped) {
  keep("ab", filler(kMaxSize - 1));
  EXPECT_THAT(released(), SizeIs(0));
}

TEST_F(EarlyEntriesLimits, SourcesAndLinesOfAllEntriesCount) {
  keep("1234", "56");
  keep("ab", filler(kMaxSize - 6 - 2 - 3));
  keep("abc", "d");
  keep("ab", "c");
  keep("", "e");
  const auto entries = released();
  ASSERT_THAT(entries, SizeIs(3));
  EXPECT_THAT(entries.back(), Pair("ab", "c"));
}

TEST_F(EarlyEntriesLimits, TwoHundredAndFiftySixEntriesAreKept) {
  for (int i = 0; i < 300; ++i) keep("a", std::to_string(i));
  const auto entries = released();
  ASSERT_THAT(entries, SizeIs(256));
  EXPECT_THAT(entries.back(), Pair("a", "255"));
}

TEST_F(EarlyEntriesLimits, ReleasedEntriesLeaveTheirRoomToOthers) {
  keep("ab", filler(kMaxSize - 2));
  released();
  keep("cd", filler(kMaxSize - 2));
  EXPECT_THAT(released(), ElementsAre(Pair("cd", filler(kMaxSize - 2))));
  EXPECT_THAT(released(), SizeIs(0));
}

}  // namespace
