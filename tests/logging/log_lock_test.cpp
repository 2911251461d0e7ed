// The lock of the log, whose operations fail on demand or are counted here.
#include "tests/logging/log_fixture.h"

#include <gmock/gmock.h>
#include <semaphore.h>

#include <cerrno>
#include <cstring>
#include <thread>

namespace {

bool isWaitFailing = false;
thread_local int held = 0;

}  // namespace

// The linker gives the module these instead of the library's (option --wrap).
extern "C" int __real_sem_wait(sem_t*);
extern "C" int __wrap_sem_wait(sem_t* semaphoreP) {
  if (isWaitFailing) {
    errno = EDEADLK;
    return -1;
  }
  ++held;
  return __real_sem_wait(semaphoreP);
}
extern "C" int __real_sem_post(sem_t*);
extern "C" int __wrap_sem_post(sem_t* semaphoreP) {
  --held;
  return __real_sem_post(semaphoreP);
}

namespace {

using testing::ElementsAre;

TEST_F(LogTest, ALockThatFailsDropsTheEntryAndWaitsForNothing) {
  init();
  isWaitFailing = true;
  testing::internal::CaptureStdout();
  LM_LOG(kInfo, "A", "A::b") << "lost";
  isWaitFailing = false;
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "Mutex::lock(): **** Error locking semaphore 'Logging_" + std::to_string(currentProcessId()) +
                "' by thread " + std::to_string(currentThreadId()) +
                "! **** errno = " + std::to_string(EDEADLK) + ", error: " + std::strerror(EDEADLK) + "\n");
  LM_LOG(kInfo, "A", "A::b") << "next";
  EXPECT_THAT(texts(), ElementsAre("next"));
}

/// Knows whether its thread held the lock at each operation.
class WatchedFile : public LogFile {
 public:
  static inline bool isAlwaysLocked = true;

  bool open(const std::string&) override { return note(); }
  void close() override { note(); }
  void write(std::string_view) override { note(); }
  std::int64_t position(bool) override { return note() ? 0 : -1; }
  bool hasItsName() override { return note(); }
  bool isNamed(const std::string&) override { return note(); }

 private:
  static bool note() {
    isAlwaysLocked = isAlwaysLocked && held == 1;
    return true;
  }
};

TEST_F(LogTest, EveryUseOfTheFileIsUnderTheLock) {
  Logging log([]() -> std::unique_ptr<LogFile> { return std::make_unique<WatchedFile>(); });
  WatchedFile::isAlwaysLocked = true;
  log.init(mPars);
  LM_LOG(kInfo, "A", "A::b") << "text";
  EXPECT_EQ(log.backupLogFile(), 0);
  EXPECT_TRUE(WatchedFile::isAlwaysLocked);
  EXPECT_EQ(held, 0);
}

TEST_F(LogTest, BackupsAreMadeBetweenTheEntriesOfOtherThreads) {
  init();
  std::thread other([] {
    for (int i = 0; i < 200; ++i) LM_LOG(kInfo, "A", "A::b") << "entry " << i << " end";
  });
  for (int i = 0; i < 20; ++i) EXPECT_EQ(mLog.backupLogFile(), 0);
  other.join();
  for (const std::string& line : entries()) EXPECT_EQ(line.substr(line.size() - 4), " end");
}

}  // namespace
