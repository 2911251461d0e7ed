#include "standin_clock.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace standin::clock {

struct Alarm::State {
  std::mutex mutex;
  std::condition_variable rung;
  bool isRung = false;
};

Alarm::Alarm() : mStateP(std::make_unique<State>()) {}
Alarm::~Alarm() = default;

bool Alarm::wait(std::uint32_t ms) {
  std::unique_lock lock(mStateP->mutex);
  mStateP->rung.wait_for(lock, std::chrono::milliseconds(ms), [this] { return mStateP->isRung; });
  return std::exchange(mStateP->isRung, false);
}

void Alarm::ring() {
  {
    const std::lock_guard lock(mStateP->mutex);
    mStateP->isRung = true;
  }
  mStateP->rung.notify_all();
}

}  // namespace standin::clock
