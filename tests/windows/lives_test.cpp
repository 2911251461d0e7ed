// The module comes and goes many times in one process, as it does when a user loads and unloads it.
#include "tests/support/handle_count.h"
#include "tests/windows/module_run.h"

namespace clock_ = standin::clock;
namespace host = standin::host;
using ::testing::IsEmpty;
using tests::handleCount;

namespace {

TEST(HandleCount, HandleCountSeesAHandleMore) {
  const int before = handleCount();
  const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  EXPECT_EQ(handleCount(), before + 1);
  CloseHandle(event);
  EXPECT_EQ(handleCount(), before);
}

TEST_F(ModuleRun, FiftyLivesWithTheCapMovingLeaveNothing) {
  int handlesAfterTheFirst = 0;
  for (int life = 0; life < 50; ++life) {
    {
      const LoadedModule module(LM_MODULE_FILE);
      module.send(AcRx::kInitAppMsg);
      // The switch is kept from life to life: whatever lies under the pointer, the view is moved.
      if (life == 0) host::type(L"LM_Toggle_Scroll_Mode");
      moveCap(static_cast<std::int16_t>(50 + life), 20);
      const std::size_t before = mHost.mUpdates.size();
      ASSERT_TRUE(serve(0, [this, before] { return mHost.mUpdates.size() > before; })) << "life " << life;
      module.send(AcRx::kUnloadAppMsg);
      ASSERT_EQ(clock_::otherThreads(), 0u) << "life " << life;
    }
    ASSERT_FALSE(LoadedModule::isMapped(LM_MODULE_FILE)) << "life " << life;
    // Messages that are under way to code that is gone would end the process here.
    serve(20);
    if (life == 0) handlesAfterTheFirst = handleCount();
  }
  // A handle that a life leaves behind is there 49 times. Where two threads meet at a lock of the threads
  // library that is linked into the module, that library makes an event which it never frees; they seldom do.
  EXPECT_LT(handleCount(), handlesAfterTheFirst + 12);
  EXPECT_EQ(mHost.mPrinted.size(), 51u);
  EXPECT_THAT(host::counts().breaches, IsEmpty());
}

}  // namespace
