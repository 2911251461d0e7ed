/// What arrives from the pages, handed from the server's thread to the main thread. Both hold the lock for as
/// long as it takes to move a few pointers.
#ifndef WORKBENCH_INBOX_H
#define WORKBENCH_INBOX_H

#include "workbench/live/page_message.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <utility>
#include <variant>
#include <vector>

namespace workbench {

/// A page has connected and is to be sent what there is to see.
struct PageArrived {};
/// Another page drives, or none.
struct DriverChanged {};

/// What the main thread does for a page while the host is idle.
struct Errand {
  std::uint64_t page = 0;
  std::variant<PageUserAction, PageOpens, PageChangesSettings, PageSaves, PageWantsReport, PageArrived,
               DriverChanged>
      what;
};

class Inbox {
 public:
  /// More than a user can ask for while the host is busy; a page that sends more is refused.
  static constexpr std::size_t kMostErrands = 1000;

  /// Server's thread. Of deflections that follow one another only the last is kept: the module reads the cap
  /// once in a pass.
  void put(PageDeviceAction action) {
    {
      const std::lock_guard lock(mMutex);
      if (!mDevice.empty() && isMotion(mDevice.back()) && isMotion(action))
        mDevice.back() = std::move(action);
      else if (mDevice.size() < kMostErrands)
        mDevice.push_back(std::move(action));
    }
    mNews.notify_one();
  }

  /// Server's thread. False when too many wait.
  bool put(Errand errand) {
    {
      const std::lock_guard lock(mMutex);
      if (mErrands.size() >= kMostErrands) return false;
      mErrands.push_back(std::move(errand));
    }
    mNews.notify_one();
    return true;
  }

  /// Main thread, as everything below.
  std::vector<PageDeviceAction> takeDevice() {
    const std::lock_guard lock(mMutex);
    return std::exchange(mDevice, {});
  }

  /// The errand that has waited longest. False when there is none.
  bool take(Errand& errand) {
    const std::lock_guard lock(mMutex);
    if (mErrands.empty()) return false;
    errand = std::move(mErrands.front());
    mErrands.pop_front();
    return true;
  }

  /// Waits until something has arrived, at most until `until`.
  void await(std::chrono::steady_clock::time_point until) {
    std::unique_lock lock(mMutex);
    mNews.wait_until(lock, until, [this] { return !mDevice.empty() || !mErrands.empty(); });
  }

 private:
  static bool isMotion(const PageDeviceAction& action) {
    const auto* const eventP = std::get_if<DeviceEvent>(&action.action);
    return eventP != nullptr && eventP->code < 0;
  }

  std::mutex mMutex;
  std::condition_variable mNews;
  std::vector<PageDeviceAction> mDevice;
  std::deque<Errand> mErrands;
};

}  // namespace workbench

#endif
