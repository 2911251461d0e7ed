#include "standin/controller/daemon.h"

#include <algorithm>
#include <exception>

namespace standin::controller {
namespace {

constexpr std::array<const char*, 7> kNames = {
    "lmConnect",    "lmDisconnect", "lmGetEvent",   "lmGetAdvancedSettings",
    "lmGetDevInfo", "lmGetDevNum",  "lmSetApplMode"};

constexpr std::size_t indexOf(Operation operation) {
  return static_cast<std::size_t>(operation);
}

}  // namespace

Daemon& Daemon::instance() {
  static auto* const daemon = new Daemon;
  return *daemon;
}

Daemon::Daemon() {
  for (const char* const name : kNames) mFaults.add(name, true);
}

void Daemon::noteBreach(const std::string& line) {
  std::vector<std::string>& lines = mState.breaches;
  if (std::find(lines.begin(), lines.end(), line) == lines.end()) lines.push_back(line);
}

void Daemon::noteOrder(Operation operation) {
  const std::lock_guard lock(mMutex);
  if (operation == Operation::kConnect) mState.isConnectCalled = true;
  if (!mState.isConnectCalled)
    noteBreach(std::string(kNames[indexOf(operation)]) + " called before the first lmConnect");
}

/// A module that is loaded again has a reader of its own, so each connection has.
void Daemon::noteReader() {
  const std::lock_guard lock(mMutex);
  const std::thread::id caller = std::this_thread::get_id();
  if (mState.reader != std::thread::id() && mState.reader != caller)
    noteBreach("lmGetEvent called from two threads");
  mState.reader = caller;
}

std::int32_t Daemon::operate(Operation operation, const std::function<std::int32_t(DaemonState&)>& work) {
  noteOrder(operation);
  if (mFaults.hit(indexOf(operation))) return kFailure;
  const std::lock_guard lock(mMutex);
  return mState.isAnswering() ? work(mState) : kFailure;
}

void Daemon::set(const std::function<void(DaemonState&)>& change) {
  const std::lock_guard lock(mMutex);
  change(mState);
}

void Daemon::change(const std::function<void(DaemonState&)>& change) {
  {
    const std::lock_guard lock(mMutex);
    change(mState);
    ++mChanges;
  }
  mWaiting.ring();
}

std::int32_t Daemon::connect(std::int32_t reserved, const char* application) {
  noteOrder(Operation::kConnect);
  set([&](DaemonState& state) {
    state.connectedAs = application == nullptr ? "" : application;
    state.connectReserved = reserved;
  });
  if (mFaults.hit(indexOf(Operation::kConnect)) || application == nullptr) return kFailure;
  if (ask<bool>([](const DaemonState& state) { return state.isDown; })) return kFailure;
  change([](DaemonState& state) {
    state.isConnected = true;
    state.reader = {};
  });
  return kSuccess;
}

/// The client's end of the connection is gone whatever the daemon answers, or answers no more.
std::int32_t Daemon::disconnect() {
  noteOrder(Operation::kDisconnect);
  if (mFaults.hit(indexOf(Operation::kDisconnect))) return kFailure;
  const bool isClosedInOrder = ask<bool>([](const DaemonState& state) { return state.isAnswering(); });
  change([](DaemonState& state) { state.isConnected = false; });
  return isClosedInOrder ? kSuccess : kFailure;
}

bool Daemon::isEventReady(std::int32_t device) const {
  return mState.isAnswering() && static_cast<std::size_t>(device) < mState.devices.size() &&
         !mState.pending.empty();
}

/// The reader's wait: true when there was one, false when an event that is enough was there already.
bool Daemon::waitForReader(std::int32_t device, bool isEventEnough) {
  std::unique_lock lock(mMutex);
  const std::uint64_t changesBefore = mChanges;
  const std::int64_t end = Waiting::nowMs() + kEventWaitMs;
  bool hasWaited = false;
  while (mChanges == changesBefore && !(isEventEnough && isEventReady(device))) {
    const std::int64_t remaining = end - Waiting::nowMs();
    if (remaining <= 0) return true;
    lock.unlock();
    mWaiting.wait(static_cast<std::uint32_t>(remaining));
    hasWaited = true;
    lock.lock();
  }
  return hasWaited;
}

std::int32_t Daemon::fetchEvent(std::int32_t device, Event& event) {
  noteOrder(Operation::kGetEvent);
  noteReader();
  const bool hasWaited = waitForReader(device, true);
  const auto pauseOnce = [&] {
    // An event that is pending does not make a misbehaving call return at once: its caller would spin.
    if (!hasWaited) waitForReader(device, false);
  };
  try {
    if (mFaults.hit(indexOf(Operation::kGetEvent))) {
      pauseOnce();
      return kFailure;
    }
  } catch (const InjectedFault&) {
    pauseOnce();
    throw;
  }
  const std::lock_guard lock(mMutex);
  if (!isEventReady(device)) return kFailure;
  event = mState.pending.front();
  mState.pending.pop_front();
  ++mState.eventsHandedOver;
  if (event.code < 0) mState.lastHandedOver = event.axes;
  return kSuccess;
}

void Daemon::deliver(const Event& event) {
  {
    const std::lock_guard lock(mMutex);
    if (mState.isDown) return;
    mState.pending.push_back(event);
  }
  mWaiting.ring();
}

}  // namespace standin::controller
