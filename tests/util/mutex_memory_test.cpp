// What the locks do when there is no memory for their diagnostics.
#include "tests/support/allocations.h"
#include "tests/util/system_faults.h"
#include "util/mutex.h"
#include "util/sleep_mutex.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <optional>

namespace {

class LocksWithoutMemory : public testing::Test {
 protected:
  LocksWithoutMemory() { testing::internal::CaptureStdout(); }
  ~LocksWithoutMemory() override { testing::internal::GetCapturedStdout(); }
};

TEST_F(LocksWithoutMemory, LockWithoutMemoryFailsAsItWouldOtherwise) {
  Mutex mutex("a");
  const tests::MemoryRunsOut memoryRunsOut(0);
  {
    const SystemFault fault(SystemCall::kSemWait, EDEADLK);
    EXPECT_EQ(mutex.lock(), -1);
  }
  const SystemFault fault(SystemCall::kSemPost, EOVERFLOW);
  EXPECT_EQ(mutex.unlock(), -1);
  EXPECT_FALSE(mutex.isLocked());
}

TEST_F(LocksWithoutMemory, LockWithoutMemoryIsDestroyed) {
  std::optional<Mutex> mutex(std::in_place, "a");
  std::optional<SleepMutex> sleepMutex(std::in_place, "a");
  const SystemFault fault(SystemCall::kSemDestroy, EBUSY);
  const tests::MemoryRunsOut memoryRunsOut(0);
  mutex.reset();
  sleepMutex.reset();
  EXPECT_FALSE(mutex.has_value());
}

}  // namespace
