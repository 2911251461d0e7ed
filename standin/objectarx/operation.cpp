/// How each operation counts its calls, checks the calling thread and reports a breach.
#include "operation.h"

#include "listener.h"

#include <thread>

namespace standin::host {
namespace {

/// A module that breaks a rule does so in every pass: the first lines are enough.
constexpr std::size_t kBreachesKept = 100;

struct Counting {
  std::recursive_mutex mutex;
  std::thread::id mainThread = std::this_thread::get_id();
  Counts counts;
};

/// Never destroyed: a module's own static objects may still call the host when the process ends.
Counting& counting() {
  static Counting& instance = *new Counting;
  return instance;
}

}  // namespace

FaultRegistry& faultRegistry() {
  // Made when the first operation registers itself, before main begins.
  static FaultRegistry& instance = *new FaultRegistry;
  return instance;
}

std::recursive_mutex& hostMutex() {
  return counting().mutex;
}

void beginCounting() {
  counting().mainThread = std::this_thread::get_id();
  counting().counts = {};
  faultRegistry().clear();
}

Counts& runningCounts() {
  return counting().counts;
}

bool isMainThread() {
  return std::this_thread::get_id() == counting().mainThread;
}

Call::Call(const Operation& operation) : mLock(hostMutex()) {
  if (!isMainThread()) {
    ++runningCounts().callsOffMainThread;
    // Carried out all the same: the host would, and a test must see what comes of it.
    breach(operation, "called off the main thread");
  }
  // Last: it may throw, and the breach must be on record by then.
  mIsToFail = operation.hit();
}

void breach(const char* operation, const char* what) {
  Counts& counts = runningCounts();
  ++counts.breachesInAll;
  const std::string text = std::string(operation) + ": " + what;
  if (counts.breaches.size() < kBreachesKept) counts.breaches.push_back(text);
  notify(&Listener::ruleBroken, text);
}

}  // namespace standin::host
