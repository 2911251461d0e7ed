// The module comes and goes many times in one process, as it does when a user loads and unloads it.
#include <windows.h>

#include "tests/windows/module_run.h"

namespace clock_ = standin::clock;
namespace host = standin::host;
using ::testing::IsEmpty;

namespace {

DWORD handleCount() {
  DWORD count = 0;
  GetProcessHandleCount(GetCurrentProcess(), &count);
  return count;
}

TEST_F(ModuleRun, FiftyLivesWithTheCapMovingLeaveNothing) {
  DWORD handlesAfterTheFirst = 0;
  for (int life = 0; life < 50; ++life) {
    {
      const LoadedModule module(LM_MODULE_FILE);
      module.send(AcRx::kInitAppMsg);
      // The switch is kept from life to life: whatever lies under the pointer, the view is moved.
      if (life == 0) host::type(L"LM_Toggle_Scroll_Mode");
      moveCap(static_cast<std::int16_t>(50 + life), 20);
      const int before = mUpdates;
      ASSERT_TRUE(serve(0, [this, before] { return mUpdates > before; })) << "life " << life;
      module.send(AcRx::kUnloadAppMsg);
      ASSERT_EQ(clock_::otherThreads(), 0u) << "life " << life;
    }
    ASSERT_FALSE(LoadedModule::isMapped(LM_MODULE_FILE)) << "life " << life;
    // Messages that are under way to code that is gone would end the process here.
    serve(20);
    if (life == 0) handlesAfterTheFirst = handleCount();
  }
  EXPECT_LE(handleCount(), handlesAfterTheFirst);
  EXPECT_EQ(mPrints.size(), 51u);
  EXPECT_THAT(host::report().breaches, IsEmpty());
}

}  // namespace
