/// The real module in a process that plays the host, on the real clock and message loop, with a user's
/// profile of its own. Main thread.
#ifndef TESTS_WINDOWS_MODULE_RUN_H
#define TESTS_WINDOWS_MODULE_RUN_H

#include "standin/controller/controller_feed.h"
#include "standin/objectarx/host_control.h"
#include "standin_clock.h"
#include "tests/module_life/loaded_module.h"
#include "tests/support/system.h"

#include "rxdefs.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

class ModuleRun : public ::testing::Test, public standin::host::Listener {
 protected:
  ModuleRun() : mFolder(tests::makeTempFolder()) {
    namespace host = standin::host;
    standin::clock::start(standin::clock::Kind::kReal, 1);
    standin::controller::reset();
    host::start([] { standin::clock::drawn(); });
    auto drawing = std::make_unique<standin::Drawing>();
    drawing->add(standin::makeLine({0x10, "0", 256}, {0, 0, 0}, {10, 5, 2}));
    host::openDocument(std::move(drawing));
    host::setListener(this);
    useProfile(L"user");
  }
  ~ModuleRun() override {
    standin::host::setListener(nullptr);
    standin::host::closeDocument();
    standin::clock::stop();
    std::error_code ignored;
    std::filesystem::remove_all(mFolder, ignored);
  }

  void modulePrinted(const std::wstring& text) override { mPrints.push_back(text); }
  void viewUpdated(int /*viewport*/, const standin::host::Camera& /*camera*/) override { ++mUpdates; }

  /// A profile folder of that name, with the driver's folders in it, is the user's from now on.
  void useProfile(const std::wstring& name) {
    mProfile = mFolder / name;
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

  std::filesystem::path mFolder;
  std::filesystem::path mProfile;
  std::vector<std::wstring> mPrints;
  int mUpdates = 0;
};

#endif
