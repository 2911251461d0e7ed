// The host's process may end without an unload message. Windows then ends the module's threads where they
// stand, which may be within the log, before it tells the module.
#include "tests/windows/module_run.h"

#include <windows.h>

#include <cstdlib>
#include <functional>
#include <thread>

namespace controller = standin::controller;
namespace fs = std::filesystem;
namespace host = standin::host;
using ::testing::HasSubstr;

namespace {

constexpr int kExitStatus = 42;
constexpr int kNotReached = 1;
constexpr const char* kWaitingFolder = "LM_WAITING_FOLDER";
constexpr const char* kSettings = "Lumetrapad/Applications/autocad_addin.ini";

/// The death tests run this program anew for each process that is to end, from the fixture on.
class ProcessEnd : public ModuleRun {
 protected:
  ProcessEnd() {
    const char* const waitingP = std::getenv(kWaitingFolder);
    if (waitingP == nullptr) {
      tests::setEnvironment(kWaitingFolder, mFolder.root().string());
      logEachKey();
      return;
    }
    // A process that ends this way removes no folder: the one that waits for it does.
    fs::remove_all(mFolder.root());
    const fs::path folder = waitingP;
    int life = 0;
    while (fs::exists(folder / std::to_string(life))) ++life;
    useProfile(folder / std::to_string(life));
    fs::copy_file(folder / "user" / kSettings, mProfile / kSettings);
  }
  ~ProcessEnd() override { tests::clearEnvironment(kWaitingFolder); }

  /// Ends this process while `thread` runs again and again, once `isReached`.
  void end(const std::function<void()>& thread, const std::function<bool()>& isReached) {
    const LoadedModule module(LM_MODULE_FILE);
    module.send(AcRx::kInitAppMsg);
    std::thread([&thread] {
      for (;;) thread();
    }).detach();
    for (int waitsMs = 0; !isReached(); ++waitsMs) {
      if (waitsMs > 20000) ExitProcess(kNotReached);
      Sleep(1);
    }
    ExitProcess(kExitStatus);
  }

  /// Far more than the module writes of itself.
  bool areHundredsOfKeysLogged() const {
    std::ifstream log(mProfile / "Lumetrapad" / "autocad_addin_log.txt", std::ios::ate);
    return log.tellg() > 100000;
  }

 private:
  /// The settings as the module writes them itself, but with the log of each key.
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
    std::ofstream(mProfile / kSettings) << settings;
  }
};

TEST_F(ProcessEnd, ProcessEndsAlsoWhileTheModuleLogs) {
  for (int life = 0; life < 20; ++life)
    EXPECT_EXIT(end(
                    [] {
                      controller::deliver({5, {}, 0, 0});
                    },
                    [this] { return areHundredsOfKeysLogged(); }),
                testing::ExitedWithCode(kExitStatus), "");
}

TEST_F(ProcessEnd, ProcessEndCallsNothingOfTheHost) {
  for (int life = 0; life < 20; ++life)
    EXPECT_EXIT(end([] { host::counts(); }, [] { return host::counts().reactors > 0; }),
                testing::ExitedWithCode(kExitStatus), "");
}

}  // namespace
