// The host's process may end without an unload message. Windows then ends the module's threads where they stand, which
// may be within the log, before it tells the module.
#include <windows.h>

#include <thread>

#include "tests/windows/module_run.h"

namespace controller = standin::controller;
using ::testing::HasSubstr;

namespace {

constexpr int kExitStatus = 42;

class ProcessEnd : public ModuleRun {
 protected:
  /// The module's settings as it writes them itself, but with the log of each key.
  void logEachKey() {
    {
      const LoadedModule module(LM_MODULE_FILE);
      module.send(AcRx::kInitAppMsg);
      module.send(AcRx::kUnloadAppMsg);
    }
    const std::string off = "debug                 = off";
    std::string settings = read("Applications/autocad_addin.ini");
    ASSERT_THAT(settings, HasSubstr(off));
    settings.replace(settings.find(off), off.size(), "debug                 = on");
    std::ofstream(mProfile / "Lumetrapad" / "Applications" / "autocad_addin.ini") << settings;
  }

  /// Ends this process while the module's reading thread logs one key after another.
  void endWhileKeysAreLogged() {
    logEachKey();
    const LoadedModule module(LM_MODULE_FILE);
    module.send(AcRx::kInitAppMsg);
    std::thread([] {
      for (;;) controller::deliver({5, {}, 0, 0});
    }).detach();
    // Some hundred lines of it, far more than the module writes of itself.
    const std::filesystem::path log = mProfile / "Lumetrapad" / "autocad_addin_log.txt";
    while (std::filesystem::file_size(log) < 100000) Sleep(1);
    ExitProcess(kExitStatus);
  }
};

TEST_F(ProcessEnd, ComesAlsoWhileTheModuleLogs) {
  for (int life = 0; life < 10; ++life)
    EXPECT_EXIT(endWhileKeysAreLogged(), testing::ExitedWithCode(kExitStatus), "");
}

}  // namespace
