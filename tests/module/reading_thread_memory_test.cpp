// The reading thread without memory: an exception that left it would end the host's process.
#include "tests/module/module_fixture.h"
#include "tests/support/allocations.h"

#include <fstream>

namespace {

/// Longer than any text but the name of the mode.
constexpr std::size_t kLongName = 100000;

class ReadingThreadMemory : public ModuleTest {
 protected:
  void SetUp() override {
    load();
    std::ofstream(mProfile.applications() / "autocad.mnu")
        << "[Modes]\nNone =\nSheet =\n" + std::string(kLongName, 'x') + " =\n\n[MenuBar]\n";
    proxy().loadMenufile();
    proxy().getNavigationMode();
    ASSERT_EQ(proxy().applModeName().size(), kLongName);
  }
  std::vector<std::string> errors() const { return logTexts("ERR", "DaemonProxy::readMouseEvents"); }
};

/// The stand-in keeps the name too, so how many copies succeed before the module's is tried out.
TEST_F(ReadingThreadMemory, ThreadOutlivesANameThatFindsNoMemory) {
  for (std::uint64_t left = 0; errors().empty(); ++left) {
    ASSERT_LT(left, 10u) << "the module keeps no copy of the name";
    const tests::MemoryRunsOut memoryRunsOut(left, kLongName);
    idle(100);
  }
  EXPECT_EQ(errors().front(), "Error readMouseEvents()");
  deflect({7, 0, 0, 0, 0, 0});
  EXPECT_EQ(mCoreP->capData().axes[0], 7) << "the thread still reads";
}

}  // namespace
