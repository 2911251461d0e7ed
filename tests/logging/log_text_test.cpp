// The text of an entry by itself: when it allocates, when it gives memory back, what is left of it without
// memory.
#include "LM_Daemon/src/log_text.h"

#include "LM_Daemon/src/early_entries.h"
#include "tests/support/allocations.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr std::size_t kFirstCapacity = 1024;
constexpr std::size_t kKeptCapacity = 65536;

template <typename Call>
std::uint64_t allocationsOf(Call call) {
  const std::uint64_t before = tests::allocations();
  call();
  return tests::allocations() - before;
}

/// A text whose buffer has exactly that capacity: twice what did not fit.
void fillTo(LogText& text, std::size_t capacity) {
  text.append(std::string(capacity / 2, 'x'));
}

TEST(LogText, TextBeginsEmptyAndDecimal) {
  LogText text;
  EXPECT_FALSE(text.isHexadecimal());
  text.appendInteger(10);
  text.append("a");
  EXPECT_EQ(text.from(0), "10a");
}

TEST(LogText, UsualLineTakesOneAllocation) {
  LogText text;
  EXPECT_EQ(allocationsOf([&text] {
              text.append(std::string_view("a"));
              text.extend(kFirstCapacity - 1);
            }),
            1u);
  EXPECT_EQ(allocationsOf([&text] { text.append("b"); }), 1u);
}

TEST(LogText, LongTextTakesFewAllocations) {
  LogText text;
  EXPECT_LT(allocationsOf([&text] {
              for (int i = 0; i < 1000; ++i) text.append("0123456789012345678901234567890123456789");
            }),
            10u);
}

TEST(LogText, GrowingKeepsTheFirstCharacter) {
  LogText text;
  text.append("a");
  text.extend(kFirstCapacity);
  EXPECT_EQ(text.from(0).front(), 'a');
  EXPECT_EQ(text.size(), kFirstCapacity + 1);
}

TEST(LogText, PointerAndHexDumpLeaveTheBaseAsItIs) {
  LogText text;
  text.appendPointer(nullptr);
  text.appendInteger(10);
  text.appendHexDump("A");
  const std::size_t start = text.size();
  text.appendInteger(11);
  EXPECT_EQ(text.from(0).substr(0, 3), "010");
  EXPECT_EQ(text.from(start), "11");
  text.setHexadecimal(true);
  EXPECT_TRUE(text.isHexadecimal());
  text.appendPointer(nullptr);
  text.appendInteger(10);
  EXPECT_EQ(text.from(start), "110a");
}

TEST(LogText, CutKeepsWhatIsBeforeItAlsoInALargeBuffer) {
  for (const std::size_t kept : {1u, 5u}) {
    LogText text;
    text.append("first" + std::string(2 * kKeptCapacity, 'x'));
    text.cut(kept);
    EXPECT_EQ(text.from(0), std::string_view("first").substr(0, kept));
  }
}

TEST(LogText, CutKeepsTheBufferOfUsualEntries) {
  LogText text;
  fillTo(text, kKeptCapacity);
  text.cut(0);
  EXPECT_EQ(allocationsOf([&text] { text.append("a"); }), 0u);
  EXPECT_EQ(text.from(0), "a");
}

TEST(LogText, CutGivesBackTheBufferOfAnUnusuallyLongEntry) {
  LogText text;
  fillTo(text, kKeptCapacity + 2);
  text.cut(0);
  EXPECT_EQ(allocationsOf([&text] { text.append("a"); }), 1u);
  EXPECT_EQ(text.from(0), "a");
}

TEST(LogTextWithoutMemory, TextThatFindsNoMemoryLeavesWhatIsThere) {
  LogText text;
  {
    const tests::MemoryRunsOut memoryRunsOut(0);
    text.append("lost");
    text.appendInteger(5);
  }
  EXPECT_EQ(text.size(), 0u);
  text.append("kept");
  const std::string longText(kFirstCapacity, 'x');
  const char* placeP = "";
  {
    const tests::MemoryRunsOut memoryRunsOut(0);
    text.append(longText);
    placeP = text.extend(longText.size());
  }
  EXPECT_EQ(placeP, nullptr);
  EXPECT_EQ(text.from(0), "kept");
}

TEST(LogTextWithoutMemory, NumberThatFindsNoMemoryIsDropped) {
  LogText text;
  text.append("a");
  text.extend(kFirstCapacity - 1);
  {
    const tests::MemoryRunsOut memoryRunsOut(0);
    text.appendInteger(5);
  }
  EXPECT_EQ(text.size(), kFirstCapacity);
}

TEST(LogTextWithoutMemory, EarlyEntryIsDropped) {
  EarlyEntries entries;
  {
    const tests::MemoryRunsOut memoryRunsOut(0);
    entries.keep(LogLevel::kInfo, "a.cpp", "lost\n");
  }
  entries.keep(LogLevel::kInfo, "b.cpp", "kept\n");
  std::string kept;
  entries.release([&kept](LogLevel, std::string_view source, std::string_view line) {
    kept.append(source).append(line);
  });
  EXPECT_EQ(kept, "b.cppkept\n");
}

}  // namespace
