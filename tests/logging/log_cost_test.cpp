#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

#include "LM_Daemon/src/logging.h"

namespace {

std::atomic<int> allocations{0};

void* allocate(std::size_t size) noexcept {
  ++allocations;
  return std::malloc(size);
}

}  // namespace

// Not to be inlined: the compiler would take malloc and delete for a pair that does not belong together.
[[gnu::noinline]] void* operator new(std::size_t size) {
  if (void* const memoryP = allocate(size)) return memoryP;
  throw std::bad_alloc();
}
[[gnu::noinline]] void* operator new[](std::size_t size) {
  return operator new(size);
}
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return allocate(size);
}
[[gnu::noinline]] void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return allocate(size);
}
[[gnu::noinline]] void operator delete(void* memoryP) noexcept {
  std::free(memoryP);
}
[[gnu::noinline]] void operator delete[](void* memoryP) noexcept {
  std::free(memoryP);
}
[[gnu::noinline]] void operator delete(void* memoryP, std::size_t) noexcept {
  std::free(memoryP);
}
[[gnu::noinline]] void operator delete[](void* memoryP, std::size_t) noexcept {
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
