#include "standin/controller/daemon.h"

#include <algorithm>
#include <string_view>

namespace standin::controller {
namespace {

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
  // A reader calls for ever: one line of its reads tells the order, and a long run stays small.
  const bool isReadAgain =
      !calls.empty() && calls.back().operation == "lmGetEvent" && std::string_view(operation) == "lmGetEvent";
  if (isReadAgain) return;
  calls.push_back({operation, clock::nowMs()});
  if (calls.size() > kCallsKept) calls.pop_front();
}

void DaemonState::noteBreach(const std::string& line) {
  if (std::find(breaches.begin(), breaches.end(), line) == breaches.end()) breaches.push_back(line);
}

void wakeReader() {
  Daemon::instance().readerAlarm.ring();
}

// --- the feed ---

FaultRegistry& faults() {
  static auto* const registry = new FaultRegistry;
  return *registry;
}

void reset() {
  faults().clear();
  changeAndWake([](DaemonState& state) { state = {}; });
}

void deliver(const Event& event) {
  {
    const Locked daemon;
    if (daemon->isDown) return;
    daemon->pending.push_back(event);
  }
  wakeReader();
}

void setDevices(const std::vector<std::string>& names) {
  changeAndWake([&names](DaemonState& state) { state.devices = names; });
}

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
