/// The observers of a run: one listener, one hook for drawing calls.
#include "listener.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <utility>

namespace standin::host {
namespace {

using Hook = std::function<void()>;

struct Observers {
  // Atomic, because a module may call the host on another thread by mistake.
  std::atomic<Listener*> listenerP{nullptr};
  std::mutex hookMutex;
  std::shared_ptr<const Hook> hookP;
};

/// Never destroyed: a module's own static objects may still call the host when the process ends.
Observers& observers() {
  static Observers& instance = *new Observers;
  return instance;
}

}  // namespace

void setListener(Listener* listenerP) {
  observers().listenerP = listenerP;
}

Listener* listener() {
  return observers().listenerP;
}

void setDrawnHook(std::function<void()> hook) {
  auto hookP = std::make_shared<const Hook>(std::move(hook));
  const std::lock_guard lock(observers().hookMutex);
  observers().hookP = std::move(hookP);
}

void drawn() {
  // A copy keeps the hook alive: it may end the run, and with it the hook that is being called.
  std::unique_lock lock(observers().hookMutex);
  const std::shared_ptr<const Hook> hookP = observers().hookP;
  lock.unlock();
  // Without the lock: the hook advances the clock, and what falls due may draw again.
  if (hookP != nullptr && *hookP) (*hookP)();
}

}  // namespace standin::host
