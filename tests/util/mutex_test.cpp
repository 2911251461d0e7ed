#include "util/mutex.h"

#include <gmock/gmock.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <sstream>
#include <thread>
#include <vector>

#include "standin_clock.h"
#include "tests/util/system_faults.h"
#include "util/threads.h"

namespace {

using testing::ElementsAre;

std::string threadText() {
  return std::to_string(currentThreadId());
}
std::string reason(int code) {
  return "errno = " + std::to_string(code) + ", error: " + std::strerror(code);
}
std::string nameOf(const char* name) {
  return std::string(name) + "_" + std::to_string(currentProcessId());
}

TEST(Mutex, IsNamedWithTheProcess) {
  EXPECT_EQ(Mutex("a").name(), nameOf("a"));
}

TEST(Mutex, KeepsTheFirstThirtyTwoCharactersOfItsName) {
  const std::string name = "0123456789012345678901234567890123456789";
  EXPECT_EQ(Mutex(name).name(), name.substr(0, 32));
}

TEST(Mutex, IsLockedUntilItIsUnlocked) {
  Mutex mutex("a");
  EXPECT_TRUE(mutex.isInitialised());
  EXPECT_FALSE(mutex.isLocked());
  EXPECT_EQ(mutex.lock(), 0);
  EXPECT_TRUE(mutex.isLocked());
  EXPECT_EQ(mutex.unlock(), 0);
  EXPECT_FALSE(mutex.isLocked());
}

TEST(Mutex, MayBeUnlockedByAnotherThread) {
  Mutex mutex("a");
  mutex.lock();
  std::thread([&mutex] { mutex.unlock(); }).join();
  EXPECT_EQ(mutex.lock(), 0);
}

TEST(Mutex, LetsOneThreadInAtATime) {
  Mutex mutex("a");
  int count = 0;
  const auto work = [&] {
    for (int i = 0; i < 5000; ++i) {
      mutex.lock();
      ++count;
      mutex.unlock();
    }
  };
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) threads.emplace_back(work);
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(count, 20000);
}

TEST(Mutex, ThatCannotBeMadeSaysSoAndStaysUninitialised) {
  const SystemFault fault(SystemCall::kSemInit, ENOSPC);
  testing::internal::CaptureStdout();
  {
    Mutex mutex("a");
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Mutex::Mutex(): **** Error initializing semaphore by thread " + threadText() + "! **** " +
                  reason(ENOSPC) + "\n");
    EXPECT_FALSE(mutex.isInitialised());
    testing::internal::CaptureStdout();
  }
  testing::internal::GetCapturedStdout();
}

TEST(Mutex, ThatIsUninitialisedCannotBeLockedAndNeverWaits) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  {
    const SystemFault fault(SystemCall::kSemInit, ENOSPC);
    Mutex mutex("a");
    EXPECT_EQ(mutex.lock(), -1);
    EXPECT_EQ(mutex.unlock(), -1);
  }
  EXPECT_NE(testing::internal::GetCapturedStdout().find(reason(EINVAL)), std::string::npos);
  EXPECT_NE(testing::internal::GetCapturedStderr().find(reason(EINVAL)), std::string::npos);
}

TEST(Mutex, ThatCannotBeLockedSaysSoOnStandardOutput) {
  Mutex mutex("a");
  const SystemFault fault(SystemCall::kSemWait, EDEADLK);
  testing::internal::CaptureStdout();
  EXPECT_EQ(mutex.lock(), -1);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "Mutex::lock(): **** Error locking semaphore '" +
                                                        nameOf("a") + "' by thread " + threadText() +
                                                        "! **** " + reason(EDEADLK) + "\n");
  EXPECT_TRUE(mutex.isLocked());
}

TEST(Mutex, ASignalDoesNotEndTheWait) {
  Mutex mutex("a");
  const SystemFault fault(SystemCall::kSemWait, EINTR, 3);
  EXPECT_EQ(mutex.lock(), 0);
}

TEST(Mutex, ThatCannotBeUnlockedSaysSoOnStandardErrorAndIsNotMarkedLocked) {
  Mutex mutex("a");
  mutex.lock();
  const SystemFault fault(SystemCall::kSemPost, EOVERFLOW);
  testing::internal::CaptureStderr();
  EXPECT_EQ(mutex.unlock(), -1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Mutex::unlock(): **** Error unlocking semaphore '" +
                                                        nameOf("a") + "' by thread " + threadText() +
                                                        "'! **** " + reason(EOVERFLOW) + "\n");
  EXPECT_FALSE(mutex.isLocked());
}

TEST(Mutex, ThatCannotBeDestroyedSaysSoOnStandardOutput) {
  const SystemFault fault(SystemCall::kSemDestroy, EBUSY);
  testing::internal::CaptureStdout();
  { const Mutex mutex("a"); }
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "Mutex::~Mutex(): Semaphore '" + nameOf("a") + "' (OS X ID not available) of thread " +
                threadText() + " could not be destroyed!" + reason(EBUSY) + "\n");
}

/// The lines of `text` that `isOwn` picks.
std::vector<std::string> linesWith(const std::string& text, const std::string& start) {
  std::vector<std::string> result;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);)
    if (line.rfind(start, 0) == 0) result.push_back(line);
  return result;
}

TEST(MutexTestRoutine, TellsEachStepOfBothThreads) {
  standin::clock::start(standin::clock::Kind::kReal, 16, 100.0);
  testing::internal::CaptureStdout();
  testMutex();
  const std::string output = testing::internal::GetCapturedStdout();
  standin::clock::stop();
  EXPECT_EQ(output.substr(0, 24), "\nSTARTING MUTEX TEST: \n\n");
  EXPECT_THAT(linesWith(output, "testMutex()"),
              ElementsAre("testMutex(): lock mutex and hold it for 2000:", "testMutex(): unlock mutex:",
                          "testMutex(): unlock mutex:", "testMutex(): ending..."));
  EXPECT_THAT(linesWith(output, "startSecondThread()"),
              ElementsAre("startSecondThread(): sleeping 1000...", "startSecondThread(): lock mutex:",
                          "startSecondThread(): got mutex and hold it for 2000",
                          "startSecondThread(): unlock mutex:", "startSecondThread(): ending..."));
  EXPECT_LT(output.find("testMutex(): unlock mutex:"), output.find("startSecondThread(): got mutex"));
}

TEST(MutexTestRoutine, GoesOnWithoutASecondThread) {
  standin::clock::start(standin::clock::Kind::kReplay);
  const SystemFault fault(SystemCall::kPthreadCreate, 0);
  testing::internal::CaptureStdout();
  testMutex();
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "\nSTARTING MUTEX TEST: \n\n"
            "testMutex(): Error creating thread!\n"
            "testMutex(): lock mutex and hold it for 2000:\n"
            "testMutex(): unlock mutex:\n"
            "testMutex(): unlock mutex:\n"
            "testMutex(): ending...\n");
  EXPECT_EQ(standin::clock::nowMs(), 9000);
  standin::clock::stop();
}

}  // namespace
