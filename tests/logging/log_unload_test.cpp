#include "tests/logging/log_fixture.h"
#include "tests/support/system.h"

#include <gmock/gmock.h>

#include <thread>

namespace {

/// Loads the module, logs from this and from another thread, and unloads it.
void runModule(const std::string& logPath) {
  void* const moduleP = tests::openLibrary(LOG_MODULE);
  const auto logInto = reinterpret_cast<void (*)(const char*)>(tests::symbolOf(moduleP, "logInto"));
  ASSERT_NE(logInto, nullptr);
  logInto(logPath.c_str());
  std::thread(logInto, logPath.c_str()).join();
  tests::closeLibrary(moduleP);
}

TEST(LogOfAModule, LogIsClosedWhenTheModuleIsUnloaded) {
  const TempFolder folder;
  runModule(folder.path("a.log"));
  EXPECT_EQ(linesOf(folder.read("a.log")).back().substr(kPrefixWidth),
            "Logging::~Logging(): destructing ...");
}

TEST(LogOfAModule, LogDoesNotKeepTheModuleInMemory) {
  const TempFolder folder;
  runModule(folder.path("a.log"));
  EXPECT_FALSE(tests::isMapped(LOG_MODULE));
}

TEST(LogOfAModule, LogBeginsAnewWhenTheModuleIsLoadedAgain) {
  const TempFolder folder;
  runModule(folder.path("a.log"));
  runModule(folder.path("b.log"));
  EXPECT_EQ(linesOf(folder.read("a.log")).size(), linesOf(folder.read("b.log")).size());
}

}  // namespace
