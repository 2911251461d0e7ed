#include "workbench/running/module_run.h"

#include "standin_clock.h"
#include "workbench/running/guarded.h"

#include <chrono>
#include <thread>

namespace workbench {
namespace {

namespace clock = standin::clock;

/// Real time for the system to take down threads that have ended. A joined thread may stay in the process's
/// list for a moment, so one look is not enough.
constexpr std::chrono::milliseconds kThreadsMayTake(1000);

std::size_t threadsLeft() {
  const auto deadline = std::chrono::steady_clock::now() + kThreadsMayTake;
  while (clock::otherThreads() != 0 && std::chrono::steady_clock::now() < deadline)
    // No sleep: in most runs the threads are gone at the first look.
    std::this_thread::yield();
  return clock::otherThreads();
}

}  // namespace

void ModuleRun::begin() {
  send(AcRx::kInitAppMsg, "the init message");
  // The host sends this for a document that is open when a module is loaded.
  send(AcRx::kLoadDwgMsg, "the load drawing message");
  // The module's threads have to reach their first wait before the session begins; otherwise the first
  // event could find nobody waiting.
  if (!clock::settle()) mProblems.emplace_back("threads did not come to rest after the init message");
}

void ModuleRun::end() {
  send(AcRx::kUnloadDwgMsg, "the unload drawing message");
  send(AcRx::kUnloadAppMsg, "the unload message");
}

bool ModuleRun::unload() {
  addProblem(clock::timerCount(), "timers left after the unload message");
  const std::size_t threads = threadsLeft();
  addProblem(threads, "threads left after the unload message");
  if (threads != 0) {
    mModule.keep();
    return false;
  }
  if (mModule.unload()) return true;
  mProblems.emplace_back("the module is still mapped after it was freed");
  return false;
}

void ModuleRun::send(AcRx::AppMsgCode message, const std::string& name) {
  guarded(name, mProblems, [&] {
    const int result = mModule.send(message);
    // A module that returns anything else reports that it did not do its work.
    if (result != AcRx::kRetOK) mProblems.push_back(name + " returned " + std::to_string(result) + ", not 0");
  });
}

void ModuleRun::addProblem(std::uint64_t count, const char* what) {
  if (count != 0) mProblems.push_back(std::to_string(count) + " " + what);
}

}  // namespace workbench
