#include "util/mutex.h"

#include "tests/util/system_faults.h"
#include "util/threads.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <optional>
#include <thread>
#include <vector>

namespace {

std::string threadText() {
  return std::to_string(currentThreadId());
}
std::string reason(int code) {
  return "errno = " + std::to_string(code) + ", error: " + std::strerror(code);
}
std::string nameOf(const char* name) {
  return std::string(name) + "_" + std::to_string(currentProcessId());
}

/// What `call` prints on standard output.
template <typename Call>
std::string output(Call call) {
  testing::internal::CaptureStdout();
  call();
  return testing::internal::GetCapturedStdout();
}

/// A mutex whose semaphore could not be made, without what it prints when it comes and goes.
class UninitialisedMutex {
 public:
  explicit UninitialisedMutex(const char* nameP) {
    const SystemFault fault(SystemCall::kSemInit, ENOSPC);
    output([&] { mMutex.emplace(nameP); });
  }
  ~UninitialisedMutex() {
    output([this] { destroy(); });
  }
  UninitialisedMutex(const UninitialisedMutex&) = delete;
  UninitialisedMutex& operator=(const UninitialisedMutex&) = delete;

  void destroy() { mMutex.reset(); }
  Mutex* operator->() const { return &*mMutex; }

 private:
  mutable std::optional<Mutex> mMutex;
};

TEST(Mutex, MutexIsNamedWithTheProcess) {
  EXPECT_EQ(Mutex("a").name(), nameOf("a"));
}

TEST(Mutex, MutexKeepsTheFirstThirtyTwoCharactersOfItsName) {
  const std::string name = "0123456789012345678901234567890123456789";
  EXPECT_EQ(Mutex(name).name(), name.substr(0, 32));
}

TEST(Mutex, MutexIsLockedUntilItIsUnlocked) {
  Mutex mutex("a");
  EXPECT_TRUE(mutex.isInitialised());
  EXPECT_FALSE(mutex.isLocked());
  EXPECT_EQ(mutex.lock(), 0);
  EXPECT_TRUE(mutex.isLocked());
  EXPECT_EQ(mutex.unlock(), 0);
  EXPECT_FALSE(mutex.isLocked());
}

TEST(Mutex, MutexMayBeUnlockedByAnotherThread) {
  Mutex mutex("a");
  mutex.lock();
  std::thread([&mutex] { mutex.unlock(); }).join();
  EXPECT_EQ(mutex.lock(), 0);
}

TEST(Mutex, MutexLetsOneThreadInAtATime) {
  Mutex mutex("a");
  std::atomic<int> inside{0};
  std::atomic<int> most{0};
  const auto work = [&] {
    for (int i = 0; i < 1000; ++i) {
      mutex.lock();
      most = std::max<int>(most, ++inside);
      std::this_thread::yield();
      --inside;
      mutex.unlock();
    }
  };
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) threads.emplace_back(work);
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(most, 1);
}

TEST(Mutex, MutexThatCannotBeMadeReportsItAndStaysUninitialised) {
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

TEST(Mutex, UninitialisedMutexCannotBeLockedAndNeverWaits) {
  const UninitialisedMutex mutex("a");
  EXPECT_EQ(output([&] { EXPECT_EQ(mutex->lock(), -1); }), "Mutex::lock(): **** Error locking semaphore '" +
                                                               nameOf("a") + "' by thread " + threadText() +
                                                               "! **** " + reason(EINVAL) + "\n");
}

TEST(Mutex, UninitialisedMutexCannotBeUnlocked) {
  const UninitialisedMutex mutex("a");
  testing::internal::CaptureStderr();
  EXPECT_EQ(mutex->unlock(), -1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Mutex::unlock(): **** Error unlocking semaphore '" +
                                                        nameOf("a") + "' by thread " + threadText() +
                                                        "'! **** " + reason(EINVAL) + "\n");
}

TEST(Mutex, UninitialisedMutexReportsItsDestruction) {
  UninitialisedMutex mutex("a");
  EXPECT_EQ(output([&] { mutex.destroy(); }), "Mutex::~Mutex(): Semaphore '" + nameOf("a") +
                                                  "' (OS X ID not available) of thread " + threadText() +
                                                  " could not be destroyed!" + reason(EINVAL) + "\n");
}

TEST(Mutex, NameThatFillsItsFieldIsPrintedWithoutTheNextBytes) {
  Mutex mutex("0123456789012345678901234567890123456789");
  const SystemFault fault(SystemCall::kSemWait, EDEADLK);
  EXPECT_EQ(output([&] { mutex.lock(); }),
            "Mutex::lock(): **** Error locking semaphore '01234567890123456789012345678901' by thread " +
                threadText() + "! **** " + reason(EDEADLK) + "\n");
}

TEST(Mutex, MutexThatCannotBeLockedReportsItOnStandardOutput) {
  Mutex mutex("a");
  const SystemFault fault(SystemCall::kSemWait, EDEADLK);
  testing::internal::CaptureStdout();
  EXPECT_EQ(mutex.lock(), -1);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "Mutex::lock(): **** Error locking semaphore '" +
                                                        nameOf("a") + "' by thread " + threadText() +
                                                        "! **** " + reason(EDEADLK) + "\n");
  EXPECT_TRUE(mutex.isLocked());
}

TEST(Mutex, SignalDoesNotEndTheWait) {
  Mutex mutex("a");
  const SystemFault fault(SystemCall::kSemWait, EINTR, 3);
  EXPECT_EQ(mutex.lock(), 0);
}

TEST(Mutex, MutexThatCannotBeUnlockedReportsItOnStandardErrorAndIsNotMarkedLocked) {
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

TEST(Mutex, MutexThatCannotBeDestroyedReportsItOnStandardOutput) {
  const SystemFault fault(SystemCall::kSemDestroy, EBUSY);
  testing::internal::CaptureStdout();
  { const Mutex mutex("a"); }
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "Mutex::~Mutex(): Semaphore '" + nameOf("a") + "' (OS X ID not available) of thread " +
                threadText() + " could not be destroyed!" + reason(EBUSY) + "\n");
}

}  // namespace
