/// A core object for benchmarks: every log level off, no selection as centre or axis, no scrolling.
#ifndef BENCH_NULL_CORE_H
#define BENCH_NULL_CORE_H

#include "common_sources/auto_cad_proxy.h"
#include "common_sources/lm_auto_cad.h"
#include "standin/controller/controller_feed.h"
#include "standin/objectarx/host_control.h"
#include "standin_clock.h"
#include "tests/support/user_profile.h"

#include <memory>

class NullCore {
 public:
  NullCore() {
    writeSettings();
    standin::clock::start(standin::clock::Kind::kReplay);
    standin::controller::reset();
    standin::host::start();
    standin::host::openDocument(std::make_unique<standin::Drawing>());
    mCoreP = std::make_unique<LmAutoCad>();
    standin::clock::settle();
  }
  ~NullCore() {
    mCoreP.reset();
    standin::clock::stop();
  }
  NullCore(const NullCore&) = delete;
  NullCore& operator=(const NullCore&) = delete;

  LmAutoCad& core() { return *mCoreP; }
  AutoCadProxy& proxy() { return *mCoreP->autoCadProxy(); }

 private:
  void writeSettings() const {
    std::string text = "[" + std::string(kProgramSection) + "]\n";
    for (const Setting& setting : kProgramSettings) text += line(setting);
    text += "\n[" + LogPars().mSectionName + "]\n";
    for (const Setting& setting : kLogSettings) text += line(setting);
    mProfile.writeSettings(text);
  }

  /// Every switch off but the one that opens the log, all else as it is by default.
  static std::string line(const Setting& setting) {
    const bool isOff = std::holds_alternative<bool>(setting.defaultValue) && setting.key != "logToFile";
    return std::string(setting.key) + " = " + (isOff ? settingText(false) : defaultText(setting)) + "\n";
  }

  UserProfile mProfile;
  std::unique_ptr<LmAutoCad> mCoreP;
};

#endif
