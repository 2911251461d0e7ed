#include "tests/logging/log_fixture.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <thread>

namespace {

constexpr int kThreads = 8;
constexpr int kEntries = 10000;

class LogThreads : public LogTest {
 protected:
  /// Every thread writes its entries; each says which thread wrote it, which of its entries it is, and ends
  /// with a mark.
  static void writeEntries() {
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) threads.emplace_back(&LogThreads::writer, thread);
    for (std::thread& thread : threads) thread.join();
  }

  static void writer(int thread) {
    for (int i = 0; i < kEntries; ++i)
      LM_LOG(kInfo, "A", "A::b") << "thread " << thread << " entry " << i << " end";
  }

  static std::string textOf(int thread, int entry) {
    return "thread " + std::to_string(thread) + " entry " + std::to_string(entry) + " end";
  }

  /// Whether the line is an entry of writer(), complete and nothing else; which one it is, then.
  static bool isWhole(const std::string& line, int& thread, int& entry) {
    if (line.size() < kPrefixWidth || line.substr(12, 5) != "|INF|") return false;
    const auto writer = static_cast<std::uint32_t>(std::stoul(line.substr(17)));
    if (line.substr(fileStart(writer) - 1, 19) != "|*hreads_test.cpp| ") return false;
    const std::string text = line.substr(prefixWidth(writer));
    return std::sscanf(text.c_str(), "thread %d entry %d", &thread, &entry) == 2 &&
           text == textOf(thread, entry);
  }

  /// Checks that each thread's entries in `lines` follow each other without a gap, and returns how many there
  /// are; `firstEntry` is what each thread begins with, -1 for any.
  static int countWhole(const std::vector<std::string>& lines, int firstEntry) {
    std::array<int, kThreads> next;
    next.fill(firstEntry);
    int count = 0;
    int thread = 0;
    int entry = 0;
    for (const std::string& line : lines) {
      if (!isWhole(line, thread, entry)) continue;
      int& expected = next.at(static_cast<std::size_t>(thread));
      if (expected >= 0 && entry != expected) ADD_FAILURE() << "gap before: " << line;
      expected = entry + 1;
      ++count;
    }
    return count;
  }
};

TEST_F(LogThreads, EveryLineIsWholeAndNoneIsLost) {
  mPars.mMaxSize = 1000000;
  init();
  writeEntries();
  const std::vector<std::string> lines = entries();
  EXPECT_EQ(lines.size(), static_cast<std::size_t>(kThreads * kEntries));
  EXPECT_EQ(countWhole(lines, 0), kThreads * kEntries);
}

TEST_F(LogThreads, TheSizeLimitAndOneBackupAreKept) {
  mPars.mMaxSize = 300;
  init();
  writeEntries();
  std::vector<std::string> lines = linesOf(mFolder.read("a.bak"));
  const std::size_t kLongestLine = 200;
  EXPECT_GE(mFolder.read("a.bak").size(), 300000u);
  EXPECT_LT(mFolder.read("a.bak").size(), 300000u + kLongestLine);
  EXPECT_LT(file().size(), 300000u + kLongestLine);
  const std::vector<std::string> newer = linesOf(file());
  lines.insert(lines.end(), newer.begin(), newer.end());
  const int kHeaderLines = 2 * 5;
  EXPECT_EQ(countWhole(lines, -1), static_cast<int>(lines.size()) - kHeaderLines);
}

TEST_F(LogThreads, AnInitWhileOthersWriteLosesNothingOfAnEntry) {
  init();
  std::thread other(&LogThreads::writer, 0);
  for (int i = 0; i < 20; ++i) init();
  other.join();
  EXPECT_EQ(countWhole(linesOf(file()), 0), kEntries);
}

}  // namespace
