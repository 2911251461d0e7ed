// The column of a thread's number, whose size the number decides.
#include "tests/logging/log_fixture.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

std::uint32_t numberOfNewThreads = 0;

}  // namespace

// The linker gives the module this instead of the system's (option --wrap).
extern "C" std::uint32_t __real_GetCurrentThreadId();
extern "C" std::uint32_t __wrap_GetCurrentThreadId() {
  return numberOfNewThreads != 0 ? numberOfNewThreads : __real_GetCurrentThreadId();
}

namespace {

class LogThreadNumbers : public LogTest {
 protected:
  /// A line, without its time, that a thread of that number logs.
  std::string lineOf(std::uint32_t number) {
    numberOfNewThreads = number;
    std::thread([] { LogEntry(LogLevel::kInfo, "a.cpp", LM_LOG_POSITION("A", "A::b")) << "text"; }).join();
    numberOfNewThreads = 0;
    return entries().back().substr(12);
  }

  static inline const std::string kRest = std::string(LM_LOG_POSITION("A", "A::b")).substr(22) + "| text";
};

TEST_F(LogThreadNumbers, UpToSixDigitsAreRightAligned) {
  init();
  EXPECT_EQ(lineOf(7).substr(0, 12), "|INF|     7|");
  EXPECT_EQ(lineOf(123456).substr(0, 12), "|INF|123456|");
  EXPECT_EQ(lineOf(123456).substr(12 + 22), kRest);
}

TEST_F(LogThreadNumbers, MoreDigitsWidenTheColumnAndNothingIsCut) {
  init();
  EXPECT_EQ(lineOf(1234567).substr(0, 13), "|INF|1234567|");
  EXPECT_EQ(lineOf(1234567).substr(13 + 22), kRest);
  EXPECT_EQ(lineOf(4294967295).substr(0, 16), "|INF|4294967295|");
  EXPECT_EQ(lineOf(4294967295).substr(16 + 22), kRest);
  EXPECT_EQ(lineOf(8).substr(0, 12), "|INF|     8|");
}

}  // namespace
