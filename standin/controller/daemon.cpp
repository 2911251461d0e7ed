/// The state of the simulated daemon, and the feed that tests and the workbench set it with.
#include "standin/controller/daemon.h"

#include <algorithm>
#include <string_view>

namespace standin::controller {
namespace {

/// The record is for the order at the start and end of a run; a day's run must not fill the memory.
constexpr std::size_t kCallsKept = 10000;

}  // namespace

Daemon& Daemon::instance() {
  static auto* const daemon = new Daemon;
  return *daemon;
}

bool DaemonState::isEventReady(std::int32_t device) const {
  return isResponding() && static_cast<std::size_t>(device) < devices.size() && !pending.empty();
}

void DaemonState::noteCall(const char* operation) {
  // A reader calls for ever: the first read of a row is enough to check the order, and a long run stays
  // small.
  const bool isReadAgain =
      !calls.empty() && calls.back().operation == "lmGetEvent" && std::string_view(operation) == "lmGetEvent";
  if (isReadAgain) return;
  calls.push_back({operation, clock::nowMs()});
  if (calls.size() > kCallsKept) calls.pop_front();
}

void DaemonState::noteBreach(const std::string& line) {
  if (std::find(breaches.begin(), breaches.end(), line) == breaches.end()) breaches.push_back(line);
}

/// Outside the state's lock: on a replay clock ring() returns when the reader has run, and the reader takes
/// that lock.
void wakeReader() {
  Daemon::instance().readerAlarm.ring();
}

// --- the feed ---

/// Made at its first use: the operations register while static objects are initialised, in any order of
/// files. Never destroyed, because a reader may outlive the statics.
FaultRegistry& faults() {
  static auto* const registry = new FaultRegistry;
  return *registry;
}

void reset() {
  // Before the state: the reader wakes with the change, and must not meet a fault of the last test.
  faults().clear();
  changeAndWake([](DaemonState& state) { state = {}; });
}

void deliver(const Event& event) {
  {
    const Locked daemon;
    if (daemon->isDown) return;
    // No change is counted: the reader looks for an event itself, and a read without one goes on waiting.
    daemon->pending.push_back(event);
  }
  wakeReader();
}

void setDevices(const std::vector<std::string>& names) {
  changeAndWake([&names](DaemonState& state) { state.devices = names; });
}

/// The reader is not woken: the device announces new settings by an event, which the caller delivers.
void setAdvancedSettings(std::int32_t rotationMode, std::uint8_t zoomAfterView) {
  const Locked daemon;
  daemon->rotationMode = rotationMode;
  daemon->zoomAfterView = zoomAfterView;
}

void setReadsBlock(bool isBlocking) {
  changeAndWake([isBlocking](DaemonState& state) { state.isReadBlocking = isBlocking; });
}

void setDown(bool isDown) {
  changeAndWake([isDown](DaemonState& state) {
    state.isDown = isDown;
    // The connection outlives the device: a daemon that comes back finds its client still connected.
    if (isDown) state.pending.clear();
  });
}

std::array<std::int16_t, 6> lastHandedOver() {
  return Locked()->lastHandedOver;
}

std::uint64_t eventsHandedOver() {
  return Locked()->eventsHandedOver;
}

std::size_t eventsPending() {
  return Locked()->pending.size();
}

std::vector<ApplMode> applModes() {
  return Locked()->applModes;
}

std::string connectedAs() {
  return Locked()->connectedAs;
}

std::int32_t connectReserved() {
  return Locked()->connectReserved;
}

bool isConnected() {
  return Locked()->isConnected;
}

std::vector<Call> calls() {
  const Locked daemon;
  return {daemon->calls.begin(), daemon->calls.end()};
}

std::vector<std::string> breaches() {
  return Locked()->breaches;
}

}  // namespace standin::controller
