#include <dlfcn.h>
#include <gmock/gmock.h>

#include <thread>

#include "tests/logging/log_fixture.h"

namespace {

/// Loads the module, logs from this and from another thread, and unloads it.
void runModule(const std::string& logPath) {
  void* const moduleP = dlopen(LOG_MODULE, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(moduleP, nullptr) << dlerror();
  const auto logInto = reinterpret_cast<void (*)(const char*)>(dlsym(moduleP, "logInto"));
  ASSERT_NE(logInto, nullptr);
  logInto(logPath.c_str());
  std::thread(logInto, logPath.c_str()).join();
  ASSERT_EQ(dlclose(moduleP), 0);
}

TEST(LogOfAModule, IsClosedWhenTheModuleIsUnloaded) {
  const TempFolder folder;
  runModule(folder.path("a.log"));
  EXPECT_EQ(linesOf(folder.read("a.log")).back().substr(kPrefixWidth),
            "Logging::~Logging(): destructing ...");
}

TEST(LogOfAModule, DoesNotKeepTheModuleInMemory) {
  const TempFolder folder;
  runModule(folder.path("a.log"));
  EXPECT_EQ(dlopen(LOG_MODULE, RTLD_NOW | RTLD_NOLOAD), nullptr);
}

TEST(LogOfAModule, BeginsAnewWhenTheModuleIsLoadedAgain) {
  const TempFolder folder;
  runModule(folder.path("a.log"));
  runModule(folder.path("b.log"));
  EXPECT_EQ(linesOf(folder.read("a.log")).size(), linesOf(folder.read("b.log")).size());
}

}  // namespace
