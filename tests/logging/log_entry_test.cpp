#include "LM_Daemon/src/log_position.h"
#include "tests/logging/log_fixture.h"
#include "util/threads.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <functional>
#include <limits>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace {

using testing::ElementsAre;

class LogEntries : public LogTest {
 protected:
  LogEntries() { init(); }
};

int raise() {
  throw std::runtime_error("raised");
}

TEST_F(LogEntries, EntryHasTimeTypeThreadPositionAndText) {
  LM_LOG(kInfo, "Proxy", "Proxy::run") << "text";
  const std::string thread = std::to_string(currentThreadId());
  const std::string expected = "|INF|" + std::string(threadWidth(currentThreadId()) - thread.size(), ' ') +
                               thread + "|*_entry_test.cpp|   " + std::to_string(__LINE__ - 3) +
                               "| Proxy::Proxy::run               | text";
  ASSERT_EQ(entries().size(), 1u);
  EXPECT_TRUE(std::regex_match(entries()[0].substr(0, 12), std::regex("\\d\\d:\\d\\d:\\d\\d\\.\\d{3}")));
  EXPECT_EQ(entries()[0].substr(12), expected);
}

/// Milliseconds since midnight of a line's time.
std::uint32_t msOf(const std::string& line) {
  const auto number = [&line](std::size_t start, std::size_t size) {
    return static_cast<std::uint32_t>(std::stoul(line.substr(start, size)));
  };
  return ((number(0, 2) * 60 + number(3, 2)) * 60 + number(6, 2)) * 1000 + number(9, 3);
}

TEST_F(LogEntries, EntryHasTheTimeOfTheClockToTheMillisecond) {
  const std::uint32_t before = Util::utcMsOfDay();
  LM_LOG(kInfo, "A", "A::b") << "text";
  // A later millisecond, so that a time kept from the first entry is noticed.
  while (Util::utcMsOfDay() == before) {
  }
  const std::uint32_t between = Util::utcMsOfDay();
  LM_LOG(kInfo, "A", "A::b") << "text";
  const std::uint32_t after = Util::utcMsOfDay();
  ASSERT_GE(after, before) << "midnight is in the middle of the test";
  EXPECT_GE(msOf(entries()[0]), before);
  EXPECT_LE(msOf(entries()[0]), between);
  EXPECT_GE(msOf(entries()[1]), between);
  EXPECT_LE(msOf(entries()[1]), after);
}

TEST_F(LogEntries, EntryNamesTheThreadThatLogs) {
  LM_LOG(kInfo, "A", "A::b") << "one";
  std::uint32_t otherId = 0;
  std::thread([&otherId] {
    otherId = currentThreadId();
    LM_LOG(kInfo, "A", "A::b") << "other";
  }).join();
  LM_LOG(kInfo, "A", "A::b") << "one again";
  ASSERT_EQ(entries().size(), 3u);
  const auto threadOf = [this](std::size_t index) {
    return static_cast<std::uint32_t>(std::stoul(entries()[index].substr(17)));
  };
  EXPECT_EQ(threadOf(0), currentThreadId());
  EXPECT_EQ(threadOf(1), otherId);
  EXPECT_EQ(threadOf(2), currentThreadId());
}

TEST_F(LogEntries, EntryEndsWithALineEnd) {
  LM_LOG(kInfo, "A", "A::b") << "text";
  EXPECT_EQ(file().substr(file().size() - 6), " text\n");
}

TEST_F(LogEntries, EntryAppendsNumbersAsAStreamDoes) {
  std::ostringstream expected;
  const auto streamInto = [](auto& stream) {
    stream << -5 << ' ' << 7u << ' ' << std::int16_t{-3} << ' ' << std::numeric_limits<std::int64_t>::min()
           << ' ' << std::numeric_limits<std::uint64_t>::max() << ' ' << true << ' ' << 3.14159265 << ' '
           << 1e-7 << ' ' << 1e20 << ' ' << 100000.0 << ' ' << 0.5f << ' ' << -0.0 << ' ' << 1234567.0 << ' '
           << std::numeric_limits<double>::infinity() << ' ' << std::string("s") << ' '
           << std::string_view("v");
  };
  streamInto(expected);
  {
    LogEntry entry(LogLevel::kInfo, "a.cpp", LM_LOG_POSITION("A", "A::b"));
    streamInto(entry);
  }
  EXPECT_THAT(texts(), ElementsAre(expected.str()));
}

TEST_F(LogEntries, EntryAppendsUnscopedEnumeratorsAndPointersAsAStreamDoes) {
  enum Status { eOk = 0, eFailed = 3 };
  const void* const addressP = reinterpret_cast<const void*>(0xabc);
  LM_LOG(kInfo, "A", "A::b") << eFailed << ' ' << addressP << ' ' << static_cast<const void*>(nullptr) << ' '
                             << static_cast<signed char>('x');
  EXPECT_THAT(texts(), ElementsAre("3 0xabc 0 x"));
}

TEST_F(LogEntries, EntryDropsANullText) {
  LM_LOG(kInfo, "A", "A::b") << "a" << static_cast<const char*>(nullptr) << "b";
  EXPECT_THAT(texts(), ElementsAre("ab"));
}

TEST_F(LogEntries, EntryCarriesNoStreamStateToTheNext) {
  LM_LOG(kInfo, "A", "A::b") << std::hex << 255 << ' ' << std::int16_t{-1} << std::dec << ' ' << 255
                             << std::hex;
  LM_LOG(kInfo, "A", "A::b") << 255;
  EXPECT_THAT(texts(), ElementsAre("ff ffff 255", "255"));
}

TEST_F(LogEntries, EntryDumpsTheNextStringInHexadecimal) {
  LM_LOG(kInfo, "A", "A::b") << 271828 << "hello world\xff"
                             << "end";
  EXPECT_THAT(linesOf(file().substr(file().find("| \n") + 3)),
              ElementsAre("       0  1  2  3  4  5  6  7  8  9", "   0: 68 65 6c 6c 6f 20 77 6f 72 6c ",
                          "  10: 64 ffffffff end"));
}

TEST_F(LogEntries, EntryDumpsAnEmptyStringAsTheHeaderAlone) {
  LM_LOG(kInfo, "A", "A::b") << 271828 << "" << 255;
  EXPECT_THAT(linesOf(file().substr(file().find("| \n") + 3)),
              ElementsAre("       0  1  2  3  4  5  6  7  8  9255"));
}

TEST_F(LogEntries, ADumpRowNumberTakesTheRoomItNeeds) {
  LM_LOG(kInfo, "A", "A::b") << 271828 << std::string(10001, 'a');
  EXPECT_EQ(linesOf(file()).back(), "10000: 61 ");
}

TEST_F(LogEntries, EntryEndsWhenTheSentinelIsStreamedAsData) {
  LM_LOG(kInfo, "A", "A::b") << "a" << 314159 << "lost";
  LM_LOG(kInfo, "A", "A::b") << 314158 << ' ' << 314159L;
  EXPECT_THAT(texts(), ElementsAre("a", "314158 314159"));
}

TEST_F(LogEntries, EntryDumpsStringsOnlyNotCharacters) {
  LM_LOG(kInfo, "A", "A::b") << 271828 << 'c' << 7 << "x";
  EXPECT_THAT(linesOf(file().substr(file().find("| c7") + 4)),
              ElementsAre("", "       0  1  2  3  4  5  6  7  8  9", "   0: 78 "));
}

TEST_F(LogEntries, EntryDoesNotDumpAStringOfAnEntryInside) {
  const auto inner = [] {
    LM_LOG(kInfo, "A", "A::c") << "inner";
    return "x";
  };
  LM_LOG(kInfo, "A", "A::b") << 271828 << inner();
  EXPECT_EQ(texts()[0], "inner");
  EXPECT_EQ(linesOf(file()).back(), "   0: 78 ");
}

TEST_F(LogEntries, EntryEndsOnlyItselfWhenAnEnumeratorIsTheSentinel) {
  enum Code { eSentinel = 314159 };
  const auto inner = [] {
    LM_LOG(kInfo, "A", "A::c") << "inner" << eSentinel << "lost";
    return 10;
  };
  LM_LOG(kInfo, "A", "A::b") << "outer " << inner() << " goes on";
  EXPECT_THAT(texts(), ElementsAre("inner", "outer 10 goes on"));
}

TEST_F(LogEntries, EntryThatASentinelEndedDoesNotStreamIntoTheNext) {
  LogEntry ended(LogLevel::kInfo, "a.cpp", LM_LOG_POSITION("A", "A::b"));
  ended << "a" << 314159;
  LogEntry next(LogLevel::kInfo, "a.cpp", LM_LOG_POSITION("A", "A::b"));
  ended << "lost";
  ended.close();
  next << "b";
  next.close();
  EXPECT_THAT(texts(), ElementsAre("a", "b"));
}

TEST_F(LogEntries, EntryTakesAnEmptyTextWithoutAnAddress) {
  LM_LOG(kInfo, std::string_view(), std::string_view())
      << "a" << std::string_view() << 271828 << std::string_view();
  EXPECT_EQ(texts()[0], "a");
  EXPECT_EQ(linesOf(file()).back(), "       0  1  2  3  4  5  6  7  8  9");
}

TEST_F(LogEntries, EntryIsClosedWhenAnOperandThrows) {
  EXPECT_THROW(LM_LOG(kError, "A", "A::b") << "before " << raise(), std::runtime_error);
  LM_LOG(kInfo, "A", "A::b") << "next";
  EXPECT_THAT(texts(), ElementsAre("before ", "next"));
}

TEST_F(LogEntries, EntryOfALevelThatIsOffDoesNotEvaluateItsOperands) {
  LM_LOG(kDebug, "A", "A::b") << raise();
  EXPECT_THAT(texts(), ElementsAre());
}

TEST_F(LogEntries, EntryOpenedInsideAnotherComesBeforeIt) {
  const auto inner = [] {
    LM_LOG(kInfo, "A", "A::c") << std::hex << "inner";
    return 10;
  };
  LM_LOG(kInfo, "A", "A::b") << "outer " << inner();
  EXPECT_THAT(texts(), ElementsAre("inner", "outer 10"));
}

TEST_F(LogEntries, EntryNestedTooDeeplyIsLeftOut) {
  const std::function<int(int)> nest = [&nest](int depth) {
    LM_LOG(kInfo, "A", "A::c") << depth << ' ' << (depth < 20 ? nest(depth + 1) : 0);
    return depth;
  };
  nest(1);
  LM_LOG(kInfo, "A", "A::b") << "next";
  EXPECT_THAT(texts(), ElementsAre("8 9", "7 8", "6 7", "5 6", "4 5", "3 4", "2 3", "1 2", "next"));
}

TEST_F(LogEntries, EntryIsAStatementThatAnElseMayFollow) {
  if (texts().empty())
    LM_LOG(kInfo, "A", "A::b") << "empty";
  else
    LM_LOG(kInfo, "A", "A::b") << "not empty";
  EXPECT_THAT(texts(), ElementsAre("empty"));
}

TEST_F(LogEntries, EntryIsMadeOfThreeStepsThatACallerMayTakeItself) {
  const LogPosition position("x\\a.cpp", 7, "A", "A::b");
  ASSERT_TRUE(mLog.openEntry(LogLevel::kWarning, "x\\a.cpp", position.text()) == false);
  ASSERT_TRUE(mLog.openEntry(LogLevel::kError, "x\\a.cpp", position.text()));
  mLog << "count " << 3 << 314159;
  EXPECT_THAT(texts(), ElementsAre("count 3"));
}

TEST_F(LogEntries, EntryThatWasNotOpenedTakesNoText) {
  mLog << "lost" << 1 << 2.5 << true << 314159 << 271828;
  LM_LOG(kInfo, "A", "A::b") << "text";
  EXPECT_THAT(texts(), ElementsAre("text"));
}

TEST_F(LogEntries, EntryOfAnUncommonLengthIsWhole) {
  LM_LOG(kInfo, "A", "A::b") << std::string(1000000, 'x');
  LM_LOG(kInfo, "A", "A::b") << "next";
  EXPECT_THAT(texts(), ElementsAre(std::string(1000000, 'x'), "next"));
}

}  // namespace
