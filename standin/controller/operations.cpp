/// The seven operations as the client library exports them. Each takes its arguments, notes a breach of the
/// calling order, carries out an injected fault and fails when the daemon does not respond. Until it succeeds
/// its outputs hold garbage: a caller that uses them after a failure shows itself.
#if !defined(_WIN32)
#pragma GCC visibility push(default)
#endif
#include "device/lmt_ctrlr.h"
#if !defined(_WIN32)
#pragma GCC visibility pop
#endif

#include "standin/controller/daemon.h"
#include "standin/operation.h"

#include <array>
#include <cstring>
#include <limits>
#include <string>

using standin::Result;
using standin::controller::changeAndWake;
using standin::controller::Daemon;
using standin::controller::DaemonState;
using standin::controller::Event;
using standin::controller::Locked;

namespace {

using Operation = standin::OperationOf<standin::controller::faults>;

constexpr std::int32_t kSuccess = 0;
constexpr std::int32_t kFailure = 1;
/// Longest wait of lmGetEvent, unless reads block.
constexpr std::uint32_t kEventWaitMs = 50;

/// What outputs hold after a failure, and the axes of a command event: values that visibly move the drawing
/// of a caller that uses them.
constexpr std::array<std::int16_t, 6> kGarbageAxes{32767, -32768, 12345, -12345, 257, -1};
constexpr std::int32_t kGarbage = -0x5A5A5A5B;
/// A count that is plausible but wrong: a caller that uses it asks for devices that are not there.
constexpr std::int32_t kGarbageCount = 3;
constexpr int kGarbageByte = 0x5A;

const Operation kConnect("lmConnect", Result::kTellsFailure);
const Operation kDisconnect("lmDisconnect", Result::kTellsFailure);
const Operation kGetEvent("lmGetEvent", Result::kTellsFailure);
const Operation kGetAdvancedSettings("lmGetAdvancedSettings", Result::kTellsFailure);
const Operation kGetDevInfo("lmGetDevInfo", Result::kTellsFailure);
const Operation kGetDevNum("lmGetDevNum", Result::kTellsFailure);
const Operation kSetApplMode("lmSetApplMode", Result::kTellsFailure);

template <typename... Pointers>
bool anyNull(Pointers... pointers) {
  return (... || (pointers == nullptr));
}

bool hasDevice(const DaemonState& state, std::int32_t index) {
  return index >= 0 && static_cast<std::size_t>(index) < state.devices.size();
}

void noteCall(const Operation& operation) {
  const Locked daemon;
  daemon->noteCall(operation.name());
  // A connect counts when it is called, not when it succeeds: a module may try again and again.
  if (&operation == &kConnect) daemon->isConnectCalled = true;
  if (!daemon->isConnectCalled)
    daemon->noteBreach(std::string(operation.name()) + " called before the first lmConnect");
}

/// Checks that one thread reads. Each connection may have its own: a module that is loaded again starts a new
/// reader.
void noteReader() {
  const Locked daemon;
  const std::thread::id caller = std::this_thread::get_id();
  if (daemon->reader != std::thread::id() && daemon->reader != caller)
    daemon->noteBreach("lmGetEvent called from two threads");
  daemon->reader = caller;
}

/// Carries out an operation that does not wait. `work` runs with the state locked and returns the status.
template <class Work>
std::int32_t operate(const Operation& operation, Work&& work) {
  noteCall(operation);
  if (operation.hit()) return kFailure;
  const Locked daemon;
  return daemon->isResponding() ? work(*daemon) : kFailure;
}

/// How long a read may wait. One that blocks never blocks without a connection: nothing would end it.
std::int64_t readingTime() {
  const Locked daemon;
  const bool isBlocking = daemon->isReadBlocking && daemon->isResponding();
  // Not truly endless: the clock takes 32 bits of ms, and 49 days outlast every run.
  return isBlocking ? std::numeric_limits<std::uint32_t>::max() : kEventWaitMs;
}

/// The reader's wait: true when there was one, false when an event that is enough was there already.
bool waitForReader(std::int32_t device, bool isEventEnough, std::int64_t waitMs) {
  Daemon& daemon = Daemon::instance();
  std::unique_lock lock(daemon.mutex);
  // A change before the call is old news; only one during the wait ends it.
  const std::uint64_t changesBefore = daemon.changes;
  const std::int64_t end = standin::clock::nowMs() + waitMs;
  bool hasWaited = false;
  while (daemon.changes == changesBefore && !(isEventEnough && daemon.state.isEventReady(device))) {
    const std::int64_t remaining = end - standin::clock::nowMs();
    if (remaining <= 0) return true;
    // The state must be free: whoever delivers the event needs its lock.
    lock.unlock();
    daemon.readerAlarm.wait(static_cast<std::uint32_t>(remaining));
    hasWaited = true;
    lock.lock();
  }
  return hasWaited;
}

/// Waits for an event. True when the read is to fail all the same.
bool waitAndHit(std::int32_t device) {
  const bool hasWaited = waitForReader(device, true, readingTime());
  const auto pauseOnce = [&] {
    // An event that is pending must not make a failing call return at once: its caller would spin.
    if (!hasWaited) waitForReader(device, false, kEventWaitMs);
  };
  try {
    const bool isToFail = kGetEvent.hit();
    if (isToFail) pauseOnce();
    return isToFail;
  } catch (const standin::InjectedFault&) {
    pauseOnce();
    throw;
  }
}

std::int32_t fetchEvent(std::int32_t device, Event& event) {
  noteCall(kGetEvent);
  noteReader();
  if (waitAndHit(device)) return kFailure;
  const Locked daemon;
  // The wait may have ended by its time or by a change, such as the device going down.
  if (!daemon->isEventReady(device)) return kFailure;
  event = daemon->pending.front();
  daemon->pending.pop_front();
  ++daemon->eventsHandedOver;
  // Only motion records: the axes of a command event never leave the daemon.
  if (event.code < 0) daemon->lastHandedOver = event.axes;
  return kSuccess;
}

}  // namespace

std::int32_t lmConnect(std::int32_t reserved, const char* applName) {
  noteCall(kConnect);
  {
    const Locked daemon;
    daemon->connectedAs = applName == nullptr ? "" : applName;
    daemon->connectReserved = reserved;
  }
  // A failed connect leaves an earlier connection as it was.
  if (kConnect.hit() || applName == nullptr || Locked()->isDown) return kFailure;
  changeAndWake([](DaemonState& state) {
    state.isConnected = true;
    state.reader = {};
  });
  return kSuccess;
}

/// The client's end of the connection closes even when the daemon no longer responds: the call then fails,
/// but the module is disconnected.
std::int32_t lmDisconnect() {
  noteCall(kDisconnect);
  if (kDisconnect.hit()) return kFailure;
  bool isClosedInOrder = false;
  changeAndWake([&isClosedInOrder](DaemonState& state) {
    isClosedInOrder = state.isResponding();
    state.isConnected = false;
  });
  return isClosedInOrder ? kSuccess : kFailure;
}

std::int32_t lmGetEvent(std::int32_t devIdx, std::int16_t* x, std::int16_t* y, std::int16_t* z,
                        std::int16_t* rx, std::int16_t* ry, std::int16_t* rz, std::int32_t* ignored1,
                        std::int32_t* ignored2, std::int32_t* eventCode, std::int32_t* extra1,
                        std::int32_t* extra2) {
  if (devIdx < 0 || anyNull(x, y, z, rx, ry, rz, ignored1, ignored2, eventCode, extra1, extra2))
    return kFailure;
  const auto handOver = [=](const Event& event) {
    std::int16_t* const axes[] = {x, y, z, rx, ry, rz};
    for (std::size_t i = 0; i < event.axes.size(); ++i) *axes[i] = event.axes[i];
    *ignored1 = kGarbage;
    *ignored2 = kGarbage;
    *eventCode = event.code;
    *extra1 = event.extra1;
    *extra2 = event.extra2;
  };
  // The code is that of a motion record: a caller that reads it after a failure moves.
  handOver({kGarbage, kGarbageAxes, kGarbage, kGarbage});
  Event event;
  const std::int32_t status = fetchEvent(devIdx, event);
  if (status != kSuccess) return status;
  if (event.code >= 0) event = {event.code, kGarbageAxes, kGarbage, kGarbage};
  handOver(event);
  return kSuccess;
}

std::int32_t lmGetAdvancedSettings(std::int32_t devIdx, LmAdvancedSettings* record) {
  // Before the call is judged: every path of failure must leave garbage.
  if (record != nullptr) std::memset(record, kGarbageByte, sizeof *record);
  return operate(kGetAdvancedSettings, [=](const DaemonState& state) {
    if (record == nullptr || !hasDevice(state, devIdx)) return kFailure;
    record->rotationMode = state.rotationMode;
    record->zoomAfterView = state.zoomAfterView;
    return kSuccess;
  });
}

std::int32_t lmGetDevInfo(std::int32_t devIdx, LmDevInfo* record) {
  // Not even a terminator: printing a name that was never read must go wrong visibly.
  if (record != nullptr) std::memset(record, kGarbageByte, sizeof *record);
  return operate(kGetDevInfo, [=](const DaemonState& state) {
    if (record == nullptr || !hasDevice(state, devIdx)) return kFailure;
    const std::string& name = state.devices[static_cast<std::size_t>(devIdx)];
    // A name that is too long is cut: the last byte is always the terminator.
    record->name[name.copy(record->name, sizeof record->name - 1)] = '\0';
    return kSuccess;
  });
}

std::int32_t lmGetDevNum(std::int32_t* count, std::int32_t* ignored1, std::int32_t* ignored2) {
  for (std::int32_t* const output : {count, ignored1, ignored2})
    if (output != nullptr) *output = kGarbageCount;
  return operate(kGetDevNum, [=](const DaemonState& state) {
    if (anyNull(count, ignored1, ignored2)) return kFailure;
    *count = static_cast<std::int32_t>(state.devices.size());
    return kSuccess;
  });
}

std::int32_t lmSetApplMode(const char* applName, const char* modeName) {
  return operate(kSetApplMode, [=](DaemonState& state) {
    if (anyNull(applName, modeName)) return kFailure;
    state.applModes.push_back({applName, modeName});
    return kSuccess;
  });
}
