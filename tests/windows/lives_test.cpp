// The module comes and goes many times in one process, as it does when a user loads and unloads it.
#include "tests/support/handle_count.h"
#include "tests/support/memory_use.h"
#include "tests/windows/module_run.h"

namespace clock_ = standin::clock;
namespace host = standin::host;
using ::testing::IsEmpty;
using tests::handleCount;

namespace {

/// The module's C runtime. Its heap has what the module and the libraries in its ABI allot, and nothing else.
constexpr const char* kModulesRuntime = "msvcr100.dll";

/// Held by the process, as AutoCAD holds it: else it would be freed with the module, and its heap with it.
const HMODULE theRuntime = LoadLibraryA(kModulesRuntime);

TEST(HeapUse, HeapUseSeesABlockMore) {
  const auto allot =
      reinterpret_cast<void* (*)(std::size_t)>(reinterpret_cast<void*>(GetProcAddress(theRuntime, "malloc")));
  const auto free =
      reinterpret_cast<void (*)(void*)>(reinterpret_cast<void*>(GetProcAddress(theRuntime, "free")));
  // Small blocks may come from a store that is kept for their size.
  for (const std::size_t size : {1u, 24u, 64u, 500u, 5000u}) {
    for (int i = 0; i < 100; ++i) free(allot(size));
    const tests::HeapUse before = tests::heapUse(kModulesRuntime);
    void* const blockP = allot(size);
    EXPECT_EQ(tests::heapUse(kModulesRuntime), (tests::HeapUse{before.blocks + 1, before.bytes + size}));
    free(blockP);
    EXPECT_EQ(tests::heapUse(kModulesRuntime), before);
  }
}

/// Two threads that meet at a lock of the stand-ins' threads library make an event there, which is kept. They
/// seldom do; a handle that each life of the module leaves is there many times.
constexpr int kEventsOfLocks = 8;

TEST(HandleCount, HandleCountSeesAHandleMore) {
  const int before = handleCount();
  const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  EXPECT_EQ(handleCount(), before + 1);
  CloseHandle(event);
  EXPECT_EQ(handleCount(), before);
}

TEST_F(ModuleRun, FiftyLivesWithTheCapMovingLeaveNothing) {
  int handlesAfterTheFirst = 0;
  tests::HeapUse heapAfterTheFirst;
  for (int life = 0; life < 50; ++life) {
    {
      const LoadedModule module(LM_MODULE_FILE);
      module.send(AcRx::kInitAppMsg);
      // The switch is kept from life to life: whatever is under the pointer, the view is moved.
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
    if (life > 0) continue;
    handlesAfterTheFirst = handleCount();
    heapAfterTheFirst = tests::heapUse(kModulesRuntime);
  }
  EXPECT_LT(handleCount(), handlesAfterTheFirst + kEventsOfLocks);
  EXPECT_EQ(tests::heapUse(kModulesRuntime), heapAfterTheFirst);
  EXPECT_EQ(mHost.mPrinted.size(), 51u);
  EXPECT_THAT(host::counts().breaches, IsEmpty());
}

TEST_F(ModuleRun, AThousandLoadsLeaveNeitherHandlesNorMemory) {
  // The first ones fill caches.
  constexpr int kFirstLoads = 20, kLoads = 1000;
  int handles = 0;
  tests::HeapUse heap;
  std::size_t bytes = 0;
  for (int load = 0; load < kFirstLoads + kLoads; ++load) {
    if (load == kFirstLoads) {
      handles = handleCount();
      heap = tests::heapUse(kModulesRuntime);
      bytes = tests::privateBytes();
    }
    const LoadedModule module(LM_MODULE_FILE);
    module.apiVersion();
    // Handled by the module without a core object: a life with its threads takes up to two seconds to end.
    module.send(AcRx::kQuitMsg);
    module.send(AcRx::kUnloadAppMsg);
  }
  // Before a failure is printed, which takes memory too. A heap grows by 64 kB at a time.
  EXPECT_LE(tests::privateBytes(), bytes + 65536);
  EXPECT_EQ(tests::heapUse(kModulesRuntime), heap);
  EXPECT_EQ(handleCount(), handles);
  EXPECT_FALSE(LoadedModule::isMapped(LM_MODULE_FILE));
}

}  // namespace
