#include "util/threads.h"

#include "standin_clock.h"
#include "util/console.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <thread>

namespace {

TEST(Threads, ThreadsHaveNumbersOfTheirOwn) {
  const std::uint32_t own = currentThreadId();
  std::uint32_t other = own;
  std::thread([&other] { other = currentThreadId(); }).join();
  EXPECT_NE(own, 0u);
  EXPECT_NE(other, own);
  EXPECT_EQ(currentThreadId(), own);
}

TEST(Threads, ProcessHasItsNumber) {
  EXPECT_EQ(currentProcessId(), static_cast<std::uint32_t>(getpid()));
}

TEST(Threads, ProcessIsNotEndingWhileItRuns) {
  EXPECT_FALSE(isProcessEnding());
}

TEST(Threads, SleepingTakesTheTimeOnTheClock) {
  standin::clock::start(standin::clock::Kind::kReplay);
  sleepMs(1234);
  EXPECT_EQ(standin::clock::nowMs(), 1234);
  standin::clock::stop();
}

TEST(Console, LinesGoToTheirStreamsWithALineEnd) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  printLine("out");
  printErrorLine("err");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "out\n");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "err\n");
}

}  // namespace
