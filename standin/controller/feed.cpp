#include "standin/controller/controller_feed.h"
#include "standin/controller/daemon.h"

namespace standin::controller {

void reset() {
  Daemon::instance().faults().clear();
  Daemon::instance().change([](DaemonState& state) { state = {}; });
}

void deliver(const Event& event) {
  Daemon::instance().deliver(event);
}

void setDevices(const std::vector<std::string>& names) {
  Daemon::instance().change([&names](DaemonState& state) { state.devices = names; });
}

void setAdvancedSettings(std::int32_t rotationMode, std::uint8_t zoomAfterView) {
  Daemon::instance().set([=](DaemonState& state) {
    state.rotationMode = rotationMode;
    state.zoomAfterView = zoomAfterView;
  });
}

void setDown(bool isDown) {
  Daemon::instance().change([isDown](DaemonState& state) {
    state.isDown = isDown;
    if (isDown) state.pending.clear();
  });
}

std::array<std::int16_t, 6> lastHandedOver() {
  return Daemon::instance().ask<std::array<std::int16_t, 6>>(
      [](const DaemonState& state) { return state.lastHandedOver; });
}

std::uint64_t eventsHandedOver() {
  return Daemon::instance().ask<std::uint64_t>(
      [](const DaemonState& state) { return state.eventsHandedOver; });
}

std::size_t eventsPending() {
  return Daemon::instance().ask<std::size_t>([](const DaemonState& state) { return state.pending.size(); });
}

std::vector<ApplMode> applModes() {
  return Daemon::instance().ask<std::vector<ApplMode>>(
      [](const DaemonState& state) { return state.applModes; });
}

std::string connectedAs() {
  return Daemon::instance().ask<std::string>([](const DaemonState& state) { return state.connectedAs; });
}

std::int32_t connectReserved() {
  return Daemon::instance().ask<std::int32_t>([](const DaemonState& state) { return state.connectReserved; });
}

bool isConnected() {
  return Daemon::instance().ask<bool>([](const DaemonState& state) { return state.isConnected; });
}

std::vector<std::string> breaches() {
  return Daemon::instance().ask<std::vector<std::string>>(
      [](const DaemonState& state) { return state.breaches; });
}

FaultRegistry& faults() {
  return Daemon::instance().faults();
}

}  // namespace standin::controller
