/// A device whose events never stop: a thread that moves the cap, presses keys, changes the settings and
/// loses the daemon.
#ifndef TESTS_SOAK_DEVICE_FEED_H
#define TESTS_SOAK_DEVICE_FEED_H

#include "tests/soak/random.h"

#include <atomic>
#include <cstdint>
#include <thread>

namespace soak {

class DeviceFeed {
 public:
  explicit DeviceFeed(std::uint64_t seed) : mRandom(seed), mThread([this] { run(); }) {}
  ~DeviceFeed();
  DeviceFeed(const DeviceFeed&) = delete;
  DeviceFeed& operator=(const DeviceFeed&) = delete;

  std::uint64_t eventsSent() const { return mEventsSent; }
  std::uint64_t losses() const { return mLosses; }

 private:
  void run();
  void sendOne();
  void moveCap();
  void loseDaemon();

  Random mRandom;
  std::atomic<bool> mIsToEnd{false};
  std::atomic<std::uint64_t> mEventsSent{0};
  std::atomic<std::uint64_t> mLosses{0};
  std::thread mThread;  ///< last: it uses the others
};

}  // namespace soak

#endif
