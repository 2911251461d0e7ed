#include "standin/controller/waiting.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace standin::controller {

struct Waiting::State {
  std::mutex mutex;
  std::condition_variable rung;
  bool isRung = false;
};

Waiting::Waiting() : mStateP(std::make_unique<State>()) {}
Waiting::~Waiting() = default;

void Waiting::wait(std::uint32_t ms) {
  std::unique_lock lock(mStateP->mutex);
  mStateP->rung.wait_for(lock, std::chrono::milliseconds(ms), [this] { return mStateP->isRung; });
  mStateP->isRung = false;
}

void Waiting::ring() {
  {
    const std::lock_guard lock(mStateP->mutex);
    mStateP->isRung = true;
  }
  mStateP->rung.notify_all();
}

std::int64_t Waiting::nowMs() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

}  // namespace standin::controller
