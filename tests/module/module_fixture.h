/// A module's core object among the stand-ins: a profile of its own, the replay clock, the host with a small
/// drawing and the controller. Tests drive it as the host and the device would, and read its log.
#ifndef TESTS_MODULE_FIXTURE_H
#define TESTS_MODULE_FIXTURE_H

#include "common_sources/auto_cad_proxy.h"
#include "common_sources/daemon_proxy.h"
#include "common_sources/lm_auto_cad.h"
#include "standin/controller/controller_feed.h"
#include "standin/objectarx/host_control.h"
#include "tests/support/host_recorder.h"
#include "tests/support/settings_text.h"
#include "tests/support/user_profile.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class ModuleTest : public ::testing::Test {
 protected:
  ModuleTest();
  ~ModuleTest() override;

  /// Writes the settings file with these keys changed from the tests' values (every log level on).
  void writeSettings(const tests::SettingsChanges& changes = {});

  /// A clock, a device and a host as new, and an empty log.
  void restart(std::uint32_t frameMs = 16);

  /// Tells the module a path of its own, in a folder with a menu exporter.
  void installModule();

  /// Creates the core object, and waits until its threads wait.
  void load();
  /// Destroys it.
  void unload();

  /// Lets the host be idle for `ms`: timers run as they fall due.
  void idle(std::int64_t ms);

  /// The cap's deflection from now on, handed to the reading thread and stored.
  void deflect(std::array<std::int16_t, 6> axes);
  /// An event of the device, processed when this returns.
  void deviceEvent(std::int32_t code);

  AutoCadProxy& proxy() { return *mCoreP->autoCadProxy(); }

  struct LogLine {
    std::string type;    ///< "ERR" ...
    std::string method;  ///< the padded column: class and method, its end only when it is long
    std::string text;
  };
  /// The log's entries, in order; of a text of several lines the first.
  std::vector<LogLine> logLines() const;

  /// Texts of the log's entries, in order; `type` ("ERR" ...) and `method` ("doTransform"), when given,
  /// choose.
  std::vector<std::string> logTexts(const std::string& type = "", const std::string& method = "") const;
  bool hasLogged(const std::string& text) const;
  std::size_t countLogged(const std::string& text) const;

  UserProfile mProfile;
  HostRecorder mHost;
  std::unique_ptr<LmAutoCad> mCoreP;
};

#endif
