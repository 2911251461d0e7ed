/// soak [SECONDS [SEED]]: loads the module, runs it among events, a user and faults, unloads it, and so on
/// until the time is up. Each life must leave nothing behind, and the process must not grow.
#include "standin/controller/controller_feed.h"
#include "standin/objectarx/call_record.h"
#include "standin/objectarx/host_control.h"
#include "standin_clock.h"
#include "standin_desktop.h"
#include "standin_messages.h"
#include "standin_win32_faults.h"
#include "tests/module_life/loaded_module.h"
#include "tests/soak/device_feed.h"
#include "tests/soak/footprint.h"
#include "tests/soak/user.h"
#include "tests/support/settings_text.h"
#include "tests/support/user_profile.h"

#include "rxdefs.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <optional>
#include <string>
#include <vector>

namespace clock_ = standin::clock;
namespace controller = standin::controller;
namespace desktop = standin::desktop;
namespace host = standin::host;

namespace {

/// A drawing call takes this long: short, so that many passes are made.
constexpr std::uint32_t kFrameMs = 2;
/// What the heap may differ by between two lives: buffers that grow with their use and are kept.
constexpr std::size_t kHeapSlackBytes = 256 * 1024;
/// Lives before the footprint is taken as settled.
constexpr std::size_t kLivesToSettle = 5;

struct Totals {
  std::uint64_t lives = 0;
  std::uint64_t ticks = 0;
  std::uint64_t passes = 0;
  std::uint64_t paperPasses = 0;
  std::uint64_t texts = 0;
};

class Soak {
 public:
  Soak(std::uint64_t seed)
      : mRandom(seed), mUser(seed + 1, mProfile.applications() / "autocad.mnu"), mDevice(seed + 2) {
    tests::SettingsChanges changes = tests::everyLogLevel("on");
    // Small enough that the log is rotated again and again.
    changes["maxSize"] = "200";
    // Ticks short enough that the user acts in the middle of movements.
    changes["maxContMoveTime"] = "40";
    mProfile.writeSettings(tests::settingsText(changes));
  }

  void run(std::int64_t untilMs) {
    while (clock_::nowMs() < untilMs && mProblems.empty()) {
      liveOnce(untilMs);
      mFootprints.push_back(soak::footprint());
    }
    checkFootprints();
  }

  /// Prints what was done; the number of problems.
  std::size_t report() const {
    std::printf(
        "%llu lives, %llu ticks, %llu passes, %llu on paper, %llu texts sent, %llu events, %llu losses,\n"
        "%llu documents, %llu faults injected; heap %zu -> %zu bytes, files %zu -> %zu\n",
        ull(mTotals.lives), ull(mTotals.ticks), ull(mTotals.passes), ull(mTotals.paperPasses),
        ull(mTotals.texts), ull(mDevice.eventsSent()), ull(mDevice.losses()), ull(mUser.documentsOpened()),
        ull(mUser.faultsInjected()), settled().heapBytes, mFootprints.back().heapBytes, settled().files,
        mFootprints.back().files);
    for (const std::string& problem : mProblems) std::printf("PROBLEM: %s\n", problem.c_str());
    return mProblems.size();
  }

 private:
  static unsigned long long ull(std::uint64_t value) { return value; }

  /// A life with faults may leave open what a faulty host would not close; one without must leave nothing.
  void liveOnce(std::int64_t untilMs) {
    const bool isFaulty = !mRandom.once(3);
    const std::int64_t end = std::min(untilMs, clock_::nowMs() + mRandom.from(20, 3000));
    startHost();
    {
      const LoadedModule module(LM_MODULE_FILE);
      if (isFaulty && mRandom.once(4)) mUser.injectFault();
      send(module, AcRx::kInitAppMsg);
      while (clock_::nowMs() < end) {
        act(isFaulty);
        runHostLoop(clock_::nowMs() + mRandom.from(1, 60));
      }
      clearFaults();
      send(module, AcRx::kUnloadAppMsg);
      check(isFaulty);
    }
    expect(!LoadedModule::isMapped(LM_MODULE_FILE), "the module is mapped after its unloading");
    endHost();
    ++mTotals.lives;
  }

  void startHost() {
    controller::reset();
    host::start([] { clock_::drawn(); });
    desktop::makeStandardDesktop();
  }

  void endHost() {
    const host::Counts counts = host::counts();
    mTotals.passes += counts.updates;
    mTotals.paperPasses += counts.paperUpdates;
    mTotals.texts += counts.textsSent;
    clearFaults();
    host::start({});
    // Kept from run to run, and it would be all that grows.
    host::callRecord() = {};
    controller::reset();
    desktop::clear();
    standin::windows::clearUserMessages();
  }

  static void clearFaults() {
    host::faults().clear();
    standin::windows::faults().clear();
    controller::faults().clear();
  }

  void act(bool isFaulty) {
    if (isFaulty && mRandom.once(3)) mUser.injectFault();
    if (isFaulty && mRandom.once(8)) clearFaults();
    guarded("an action of the user's", [this] { mUser.act(); });
  }

  void runHostLoop(std::int64_t untilMs) {
    while (clock_::nowMs() < untilMs) {
      bool isBusy = false;
      guarded("a queued text", [&isBusy] { isBusy = host::runQueuedText(); });
      guarded("a timer procedure", [&, this] {
        if (!clock_::runDueTimer()) return;
        isBusy = true;
        ++mTotals.ticks;
      });
      if (!isBusy) clock_::advanceTo(std::min(untilMs, clock_::nextTimer().value_or(untilMs)));
    }
  }

  void send(const LoadedModule& module, int message) {
    guarded("the entry point", [&] { module.send(message); });
  }

  template <class Call>
  void guarded(const char* what, const Call& call) {
    try {
      call();
    } catch (const std::exception& error) {
      mProblems.push_back(std::string(what) + " threw: " + error.what());
    }
  }

  void check(bool isFaulty) {
    const host::Counts counts = host::counts();
    expect(clock_::otherThreads() == 1, "a thread outlives the unload message");
    expect(clock_::timerCount() == 0, "a timer outlives the unload message");
    expect(counts.callsOffMainThread == 0, "the host was called off the main thread");
    if (isFaulty) return;
    for (const std::string& breach : counts.breaches) mProblems.push_back("rule broken: " + breach);
    for (const std::string& breach : controller::breaches()) mProblems.push_back("rule broken: " + breach);
    expect(counts.commandsRegistered == 0, "a command outlives the unload message");
    expect(counts.reactors == 0, "a reactor outlives the unload message");
    expect(counts.openObjects == 0, "an object is left open");
    expect(counts.selectionSetsAlive == 0, "a selection set is not freed");
    expect(counts.lockDepth == 0, "a document is left locked");
  }

  void checkFootprints() {
    expect(mFootprints.back().files == mFootprints.front().files,
           "the process holds more files than at first");
    expect(mFootprints.back().heapBytes <= settled().heapBytes + kHeapSlackBytes, "the heap grows");
  }

  const soak::Footprint& settled() const {
    return mFootprints[std::min(kLivesToSettle, mFootprints.size()) - 1];
  }

  void expect(bool isTrue, const char* problem) {
    if (!isTrue) mProblems.emplace_back(problem);
  }

  UserProfile mProfile;
  soak::Random mRandom;
  soak::User mUser;
  soak::DeviceFeed mDevice;
  Totals mTotals;
  std::vector<soak::Footprint> mFootprints;
  std::vector<std::string> mProblems;
};

}  // namespace

int main(int count, char** arguments) {
  const long seconds = count > 1 ? std::strtol(arguments[1], nullptr, 10) : 60;
  const std::uint64_t seed = count > 2 ? std::strtoull(arguments[2], nullptr, 10) : std::random_device()();
  if (seconds <= 0 || count > 3) {
    std::fprintf(stderr, "usage: soak [SECONDS [SEED]]: expected at least one second\n");
    return 2;
  }
  std::printf("soak %ld %llu\n", seconds, static_cast<unsigned long long>(seed));
  std::fflush(stdout);
  clock_::start(clock_::Kind::kReal, kFrameMs);
  Soak soak(seed);
  soak.run(std::int64_t{seconds} * 1000);
  return soak.report() == 0 ? 0 : 1;
}
