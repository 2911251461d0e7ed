/// The real module in a process that plays the host, on the real clock and message loop, with a user's
/// profile of its own. Main thread.
#ifndef TESTS_WINDOWS_MODULE_RUN_H
#define TESTS_WINDOWS_MODULE_RUN_H

#include "standin/controller/controller_feed.h"
#include "standin/objectarx/host_control.h"
#include "standin_clock.h"
#include "tests/module_life/loaded_module.h"
#include "tests/support/host_recorder.h"
#include "tests/support/temp_folder.h"

#include "rxdefs.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

class ModuleRun : public ::testing::Test {
 protected:
  ModuleRun() {
    namespace host = standin::host;
    standin::clock::start(standin::clock::Kind::kReal, 1);
    standin::controller::reset();
    host::start([] { standin::clock::drawn(); });
    auto drawing = std::make_unique<standin::Drawing>();
    drawing->add(standin::makeLine({0x10, "0", 256}, {0, 0, 0}, {10, 5, 2}));
    host::openDocument(std::move(drawing));
    host::setListener(&mHost);
    useProfile(mFolder / "user");
  }
  ~ModuleRun() override {
    standin::host::setListener(nullptr);
    standin::host::closeDocument();
    standin::clock::stop();
  }

  /// Makes a profile folder with the driver's folders in it the user's.
  void useProfile(const std::filesystem::path& folder) {
    mProfile = folder;
    std::filesystem::create_directories(mProfile / "Lumetrapad" / "Applications");
    _wputenv_s(L"USERPROFILE", mProfile.c_str());
  }

  std::string read(const char* name) const {
    std::ifstream file(mProfile / "Lumetrapad" / name);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  /// Serves the host's loop for `ms`, and for as long as `isAwaited` says no, 20 s at most.
  template <typename Condition>
  bool serve(std::int64_t ms, Condition isAwaited) {
    namespace clock = standin::clock;
    const std::int64_t start = clock::nowMs();
    while (clock::nowMs() < start + ms || !isAwaited()) {
      if (clock::nowMs() > start + 20000) return false;
      clock::advanceTo(clock::nowMs() + 10);
      clock::runDueTimer();
      standin::host::runQueuedText();
    }
    return true;
  }
  void serve(std::int64_t ms) {
    serve(ms, [] { return true; });
  }

  static void moveCap(std::int16_t x, std::int16_t ry) {
    standin::controller::deliver({-1, {x, 0, 0, 0, ry, 0}, 0, 0});
  }

  TempFolder mFolder;
  std::filesystem::path mProfile;
  HostRecorder mHost;
};

#endif
