#include "operation.h"

#include "state.h"

#include <thread>

namespace standin::host {
namespace {

constexpr std::size_t kBreachesKept = 100;

}  // namespace

Call::Call(const Operation& operation) : mLock(state().mMutex) {
  if (std::this_thread::get_id() != state().mMainThread) {
    ++run().mReport.callsOffMainThread;
    breach(operation, "called off the main thread");
  }
  mIsToFail = operation.hit();
}

void breach(const char* operation, const char* what) {
  Report& report = run().mReport;
  ++report.breachesInAll;
  if (report.breaches.size() < kBreachesKept) report.breaches.push_back(std::string(operation) + ": " + what);
}

}  // namespace standin::host
