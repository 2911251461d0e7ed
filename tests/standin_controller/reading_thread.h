/// A thread that reads events as the module does, and keeps what it was given.
#ifndef TESTS_STANDIN_CONTROLLER_READING_THREAD_H
#define TESTS_STANDIN_CONTROLLER_READING_THREAD_H

#include "device/lmt_ctrlr.h"
#include "standin_clock.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

/// What one lmGetEvent returned.
struct Reading {
  std::int64_t timeMs = 0;
  std::int32_t status = -1;
  std::int32_t code = 0;
  std::array<std::int16_t, 6> axes{};
  std::int32_t extra1 = 0;
  std::int32_t extra2 = 0;
  bool isThrown = false;
};

inline bool operator==(const Reading& a, const Reading& b) {
  return a.timeMs == b.timeMs && a.status == b.status && a.code == b.code && a.axes == b.axes &&
         a.extra1 == b.extra1 && a.extra2 == b.extra2 && a.isThrown == b.isThrown;
}

inline Reading readOnce(std::int32_t device = 0) {
  Reading reading;
  auto& axes = reading.axes;
  std::int32_t ignored1 = -1;
  std::int32_t ignored2 = -1;
  try {
    reading.status = lmGetEvent(device, &axes[0], &axes[1], &axes[2], &axes[3], &axes[4], &axes[5], &ignored1,
                                &ignored2, &reading.code, &reading.extra1, &reading.extra2);
  } catch (const std::exception&) {
    reading.isThrown = true;
  }
  // Outputs of a failed read are garbage; a test of its own looks at them.
  if (reading.status != 0) reading = {0, reading.status, 0, {}, 0, 0, reading.isThrown};
  reading.timeMs = standin::clock::nowMs();
  return reading;
}

class ReadingThread {
 public:
  ReadingThread() : mThread([this] { run(); }) {}
  /// Needs a reader that lmGetEvent lets go: call lmDisconnect or advance the clock on the way.
  ~ReadingThread() { end(); }

  void end() {
    mIsToRead = false;
    if (!mThread.joinable()) return;
    if (standin::clock::kind() == standin::clock::Kind::kReplay)
      standin::clock::advanceTo(standin::clock::nowMs() + 51);
    mThread.join();
  }
  void letGo() { mIsToRead = false; }
  bool isReading() const { return mIsReading; }

  std::vector<Reading> readings() const {
    const std::lock_guard lock(mMutex);
    return mReadings;
  }

  /// Codes of the events that were handed over, with the times.
  std::vector<std::pair<std::int64_t, std::int32_t>> events() const {
    std::vector<std::pair<std::int64_t, std::int32_t>> result;
    for (const Reading& reading : readings())
      if (reading.status == 0) result.emplace_back(reading.timeMs, reading.code);
    return result;
  }

 private:
  void run() {
    while (mIsToRead) {
      const Reading reading = readOnce();
      const std::lock_guard lock(mMutex);
      mReadings.push_back(reading);
    }
    mIsReading = false;
  }

  mutable std::mutex mMutex;
  std::vector<Reading> mReadings;
  std::atomic<bool> mIsToRead{true};
  std::atomic<bool> mIsReading{true};
  std::thread mThread;
};

#endif
