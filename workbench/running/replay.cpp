#include "workbench/running/replay.h"

#include "standin/controller/controller_feed.h"
#include "workbench/input_error.h"
#include "workbench/platform/desktop.h"
#include "workbench/running/module_run.h"
#include "workbench/running/moments.h"
#include "workbench/running/reloading.h"
#include "workbench/running/settings_file.h"
#include "workbench/sessions/session_player.h"

#include <algorithm>
#include <exception>
#include <fstream>
#include <iterator>
#include <optional>
#include <utility>

namespace workbench {
namespace {

namespace clock = standin::clock;
namespace controller = standin::controller;
namespace host = standin::host;

std::string counted(std::uint64_t count, const char* what) {
  return std::to_string(count) + " " + what;
}

/// The desktop is of interest only to a session that moves the pointer.
MomentRecorder::Desktop desktopOf(const Session& session) {
  const bool isUsed = std::any_of(session.user.begin(), session.user.end(), [](const TimedUserAction& event) {
    return std::holds_alternative<MovePointer>(event.action);
  });
  return isUsed ? MomentRecorder::Desktop::kShown : MomentRecorder::Desktop::kLeftOut;
}

/// As the module has read them. A switch that the file lacks is at its default, as is all without a file.
ReportToggles togglesOf(const std::filesystem::path& settings, std::int64_t timeMs) {
  ReportToggles toggles{timeMs};
  // A file that cannot be read is no failure of the run: the module does without it too.
  std::ifstream file(settings, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  for (const SettingLine& line : settingLines(text)) {
    // As the module reads a switch.
    const bool isOn = line.value.find("on") != std::string::npos;
    if (line.key == "toggleRotationCenter") toggles.isSelectionCentre = isOn;
    if (line.key == "toggleRotationAxis") toggles.isLineAxis = isOn;
  }
  return toggles;
}

class Run {
 public:
  Run(ReplayRequest request, Module& module)
      : mRequest(std::move(request)),
        mModuleRun(module, mResult.problems),
        mReloading(module, mModuleRun, mRequest.settings, [this] { noteToggles(clock::nowMs()); }),
        mMoments(mRequest.session.endMs, mRequest.moments, desktopOf(mRequest.session)) {}

  RunResult go() {
    mResult.endMs = mRequest.session.endMs;
    // Taken before the drawing moves into the host.
    mResult.notUnderstood = mRequest.drawing->mSkipped;
    startWorld();
    Recorder recorder(mRequest.runAssembly);
    recorder.begin();
    mMoments.begin();
    runModule(recorder);
    // Unloaded before collecting: the counts of what is left must include what the module releases last.
    mModuleRun.unload();
    // Before collecting: forgets what the module may have left on it.
    clock::stop();
    collect(recorder);
    // Closing would call a reactor that is still registered, whose code has been unloaded.
    while (mResult.host.reactors == 0 && host::drawing() != nullptr) host::closeDocument();
    return std::move(mResult);
  }

 private:
  void startWorld() {
    // Before the clock starts: a real window takes time to appear.
    resetDesktop();
    clock::start(mRequest.clock, mRequest.frameMs);
    clock::setDate(mRequest.dateMs);
    // Otherwise the first lines that the module and its new threads log come in either order.
    clock::setSettlingNewThreads(mRequest.clock == clock::Kind::kReplay);
    // Queued events and settings of an earlier run in this process.
    controller::reset();
    // A read that gives up after a while wakes the module's thread to no purpose, millions of times in a long
    // replay. In real time it does give up, so that both kinds of library are tried.
    controller::setReadsBlock(mRequest.clock == clock::Kind::kReplay);
    host::start([this] {
      // The screen is recorded before the call's time passes, at the time when the call was made.
      mMoments.look();
      clock::drawn();
    });
    host::openDocument(std::move(mRequest.drawing));
  }

  /// From the init message to the unload message, which is sent however the session ends.
  void runModule(Recorder& recorder) {
    mDevice.emplace(mRequest.session);
    // Scrolling makes no drawing call, so the clock triggers the capture too.
    for (const std::int64_t timeMs : mMoments.times()) clock::schedule(timeMs, [this] { mMoments.look(); });
    mModuleRun.begin();
    noteToggles(0);
    try {
      HostLoop(mRequest.session, *mDevice, {recorder, mRequest.writeMenu, mReloading}, mResult.problems)
          .run([this](std::int64_t nowMs, std::int64_t endMs) {
            mMoments.look();
            if (mRequest.progress) mRequest.progress(nowMs, endMs);
          });
      // Before the unload, so that the last moment does not show what the module does then.
      mMoments.finish();
    } catch (const InputError& error) {
      noteFailure(error);
    } catch (const Interrupted& interrupted) {
      noteFailure(interrupted);
    }
    mModuleRun.end();
  }

  /// The module has been loaded.
  void noteToggles(std::int64_t timeMs) { mResult.toggles.push_back(togglesOf(mRequest.settings, timeMs)); }

  void noteFailure(const std::exception& failure) {
    mResult.failure = std::current_exception();
    mResult.ending = failure.what();
    mResult.problems.emplace_back(failure.what());
    mResult.endMs = clock::nowMs();
  }

  void addProblem(std::uint64_t count, const char* what) {
    if (count != 0) mResult.problems.push_back(counted(count, what));
  }

  void collect(Recorder& recorder) {
    mResult.isReplay = clock::kind() == clock::Kind::kReplay;
    mResult.recording = recorder.take();
    mResult.shapes = mMoments.takeShapes();
    mResult.moments = mMoments.takeMoments();
    mResult.momentsLeftOut = mMoments.leftOut();
    mResult.host = host::counts();
    mResult.eventsDelivered = controller::eventsHandedOver();
    mResult.eventsNotFetched = controller::eventsPending();
    // After take(), which moves the recorder's breaches into the result.
    judgeHost(mResult.host);
    addProblem(clock::stalls(), "times a thread neither waited nor ended");
    for (const std::string& breach : controller::breaches())
      mResult.problems.push_back("controller: " + breach);
    if (const standin::Drawing* const drawing = host::drawing()) mResult.entities = listEntities(*drawing);
  }

  void judgeHost(const host::Counts& counts) {
    for (const Breach& breach : mResult.recording.breaches)
      mResult.problems.push_back("host: " + breach.text + " (" + counted(breach.count, "times, first at ") +
                                 std::to_string(breach.firstMs) + " ms)");
    addProblem(counts.callsOffMainThread, "host calls off the main thread");
    addProblem(counts.openObjects, "objects left open");
    addProblem(counts.selectionSetsAlive, "selection sets not freed");
    addProblem(counts.reactors, "document reactors left registered");
    addProblem(counts.commandsRegistered, "commands left registered");
    if (counts.lockDepth != 0)
      mResult.problems.push_back("the document lock is held at the end, depth " +
                                 std::to_string(counts.lockDepth));
  }

  ReplayRequest mRequest;
  RunResult mResult;
  ModuleRun mModuleRun;
  Reloading mReloading;
  MomentRecorder mMoments;
  std::optional<DeviceSchedule> mDevice;  ///< lives as long as the clock may call it
};

}  // namespace

RunResult replay(ReplayRequest request, Module& module) {
  return Run(std::move(request), module).go();
}

}  // namespace workbench
