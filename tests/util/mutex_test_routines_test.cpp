#include "standin_clock.h"
#include "tests/util/system_faults.h"
#include "util/mutex.h"

#include <gmock/gmock.h>

#include <initializer_list>
#include <vector>

namespace {

using testing::ElementsAre;

class MutexTestRoutine : public testing::Test {
 protected:
  MutexTestRoutine() {
    standin::clock::start(standin::clock::Kind::kReplay);
    testing::internal::CaptureStdout();
  }
  ~MutexTestRoutine() override { standin::clock::stop(); }

  /// Keeps whether the mutex is locked at each of `times`.
  template <typename MutexOf>
  void watch(MutexOf mutexOf, std::initializer_list<std::int64_t> times) {
    for (const std::int64_t time : times)
      standin::clock::schedule(time, [this, mutexOf] { mWasLocked.push_back(mutexOf().isLocked()); });
  }

  std::vector<bool> mWasLocked;
};

TEST_F(MutexTestRoutine, RoutineHoldsTheMutexAgainstTheSecondThread) {
  const HeldThread held;
  watch([]() -> Mutex& { return *static_cast<Mutex*>(HeldThread::argument()); }, {1, 3999, 4001, 8999});
  testMutex();
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "\nSTARTING MUTEX TEST: \n\n"
            "testMutex(): lock mutex and hold it for 2000:\n"
            "testMutex(): unlock mutex:\n"
            "testMutex(): unlock mutex:\n"
            "testMutex(): ending...\n");
  EXPECT_EQ(HeldThread::body(), &startSecondThread);
  EXPECT_THAT(mWasLocked, ElementsAre(true, true, false, false));
  EXPECT_EQ(standin::clock::nowMs(), 9000);
}

TEST_F(MutexTestRoutine, RoutineTakesTheMutexForTwoSecondsInTheSecondThread) {
  Mutex mutex("test");
  watch([&mutex]() -> Mutex& { return mutex; }, {999, 1001, 2999, 3001});
  EXPECT_EQ(startSecondThread(&mutex), nullptr);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "startSecondThread(): sleeping 1000...\n"
            "startSecondThread(): lock mutex:\n"
            "startSecondThread(): got mutex and hold it for 2000\n"
            "startSecondThread(): unlock mutex:\n"
            "startSecondThread(): ending...\n");
  EXPECT_THAT(mWasLocked, ElementsAre(false, true, true, false));
  EXPECT_EQ(standin::clock::nowMs(), 4000);
}

TEST_F(MutexTestRoutine, RoutineGoesOnWithoutASecondThread) {
  const SystemFault fault(SystemCall::kPthreadCreate, 0);
  testMutex();
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "\nSTARTING MUTEX TEST: \n\n"
            "testMutex(): Error creating thread!\n"
            "testMutex(): lock mutex and hold it for 2000:\n"
            "testMutex(): unlock mutex:\n"
            "testMutex(): unlock mutex:\n"
            "testMutex(): ending...\n");
  EXPECT_EQ(standin::clock::nowMs(), 9000);
}

}  // namespace
