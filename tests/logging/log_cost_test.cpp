#include "LM_Daemon/src/logging.h"
#include "tests/support/allocations.h"

#include <gtest/gtest.h>

namespace {

void log(LogLevel level, double value) {
  LogEntry(level, "a.cpp", LM_LOG_POSITION("AutoCadProxy", "AutoCadProxy::moveXYZ"))
      << "value: " << value << " of " << 3;
}

TEST(LogCost, ALevelThatIsOffAllocatesNothing) {
  Logging processWide;
  processWide.init({});
  const std::uint64_t before = tests::allocations();
  for (int i = 0; i < 100; ++i) log(LogLevel::kDebug, i);
  EXPECT_EQ(tests::allocations(), before);
}

TEST(LogCost, AnEntryAllocatesNothingOnceTheFirstIsWritten) {
  Logging processWide;
  LogPars pars;
  pars.mLogFile = "\\dev\\null";
  processWide.init(pars);
  log(LogLevel::kInfo, 0.5);
  const std::uint64_t before = tests::allocations();
  for (int i = 0; i < 100; ++i) log(LogLevel::kInfo, i);
  EXPECT_EQ(tests::allocations(), before);
}

}  // namespace
