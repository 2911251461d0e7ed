#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

#include "LM_Daemon/src/logging.h"

namespace {
std::atomic<int> allocations{0};
}  // namespace

void* operator new(std::size_t size) {
  ++allocations;
  if (void* const memoryP = std::malloc(size)) return memoryP;
  throw std::bad_alloc();
}
void operator delete(void* memoryP) noexcept {
  std::free(memoryP);
}
void operator delete(void* memoryP, std::size_t) noexcept {
  std::free(memoryP);
}

namespace {

void log(LogLevel level, double value) {
  LogEntry(level, "a.cpp", 1, "AutoCadProxy", "AutoCadProxy::moveXYZ") << "value: " << value << " of " << 3;
}

TEST(LogCost, ALevelThatIsOffAllocatesNothing) {
  Logging processWide;
  const int before = allocations;
  for (int i = 0; i < 100; ++i) log(LogLevel::kDebug, i);
  EXPECT_EQ(allocations, before);
}

TEST(LogCost, AnEntryAllocatesNothingOnceTheFirstIsWritten) {
  Logging processWide;
  LogPars pars;
  pars.mLogFile = "\\dev\\null";
  processWide.init(pars);
  log(LogLevel::kInfo, 0.5);
  const int before = allocations;
  for (int i = 0; i < 100; ++i) log(LogLevel::kInfo, i);
  EXPECT_EQ(allocations, before);
}

}  // namespace
