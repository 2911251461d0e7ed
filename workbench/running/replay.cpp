#include "workbench/running/replay.h"

#include "standin/controller/controller_feed.h"
#include "workbench/input_error.h"
#include "workbench/platform/desktop.h"
#include "workbench/running/moments.h"
#include "workbench/sessions/session_player.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <optional>
#include <thread>
#include <utility>

namespace workbench {
namespace {

namespace clock = standin::clock;
namespace controller = standin::controller;
namespace host = standin::host;

/// Real time for the system to take down threads that have ended. A joined thread may stay in the process's
/// list for a moment, so one look is not enough.
constexpr std::chrono::milliseconds kThreadsMayTake(1000);

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

class Run {
 public:
  Run(ReplayRequest request, Module& module)
      : mRequest(std::move(request)),
        mModule(module),
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
    unload();
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
    send(AcRx::kInitAppMsg, "the init message");
    // The host sends this for a document that is open when a module is loaded.
    send(AcRx::kLoadDwgMsg, "the load drawing message");
    // The module's threads have to reach their first wait before the session begins; otherwise the first
    // event could find nobody waiting.
    settle("the init message");
    try {
      HostLoop(mRequest.session, *mDevice, {recorder, mRequest.writeMenu}, mResult.problems)
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
    send(AcRx::kUnloadDwgMsg, "the unload drawing message");
    send(AcRx::kUnloadAppMsg, "the unload message");
  }

  void noteFailure(const std::exception& failure) {
    mResult.failure = std::current_exception();
    mResult.ending = failure.what();
    mResult.problems.emplace_back(failure.what());
    mResult.endMs = clock::nowMs();
  }

  void send(AcRx::AppMsgCode message, const std::string& name) {
    guarded(name, mResult.problems, [&] {
      const int result = mModule.send(message);
      // A module that returns anything else reports that it did not do its work.
      if (result != AcRx::kRetOK)
        mResult.problems.push_back(name + " returned " + std::to_string(result) + ", not 0");
    });
  }

  void settle(const std::string& after) {
    if (!clock::settle()) mResult.problems.push_back("threads did not come to rest after " + after);
  }

  /// A thread that still runs would crash in unloaded code, so the library stays loaded then and the run ends
  /// with a line that reports the thread.
  void unload() {
    // Asked before the clock stops, which forgets all timers.
    addProblem(clock::timerCount(), "timers left after the unload message");
    clock::stop();
    const std::size_t threads = threadsLeft();
    addProblem(threads, "threads left after the unload message");
    if (threads != 0)
      mModule.keep();
    else if (!mModule.unload())
      mResult.problems.emplace_back("the module is still mapped after it was freed");
  }

  static std::size_t threadsLeft() {
    const auto deadline = std::chrono::steady_clock::now() + kThreadsMayTake;
    // Real time: the clock of the run has stopped.
    while (clock::otherThreads() != 0 && std::chrono::steady_clock::now() < deadline)
      // No sleep: in most runs the threads are gone at the first look.
      std::this_thread::yield();
    return clock::otherThreads();
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
  Module& mModule;
  MomentRecorder mMoments;
  std::optional<DeviceSchedule> mDevice;  ///< lives as long as the clock may call it
  RunResult mResult;
};

}  // namespace

RunResult replay(ReplayRequest request, Module& module) {
  return Run(std::move(request), module).go();
}

}  // namespace workbench
