/// The seven operations as the client library exports them.
#if !defined(_WIN32)
#pragma GCC visibility push(default)
#endif
#include "device/lmt_ctrlr.h"
#if !defined(_WIN32)
#pragma GCC visibility pop
#endif

#include "standin/controller/daemon.h"

#include <algorithm>
#include <string>

using standin::controller::Daemon;
using standin::controller::DaemonState;
using standin::controller::Event;
using standin::controller::Operation;

namespace {

template <typename... Pointers>
bool anyNull(Pointers... pointers) {
  return (... || (pointers == nullptr));
}

bool hasDevice(const DaemonState& state, std::int32_t index) {
  return index >= 0 && static_cast<std::size_t>(index) < state.devices.size();
}

}  // namespace

std::int32_t lmConnect(std::int32_t reserved, const char* applName) {
  return Daemon::instance().connect(reserved, applName);
}

std::int32_t lmDisconnect() {
  return Daemon::instance().disconnect();
}

std::int32_t lmGetEvent(std::int32_t devIdx, std::int16_t* x, std::int16_t* y, std::int16_t* z,
                        std::int16_t* rx, std::int16_t* ry, std::int16_t* rz, std::int32_t* ignored1,
                        std::int32_t* ignored2, std::int32_t* eventCode, std::int32_t* extra1,
                        std::int32_t* extra2) {
  if (devIdx < 0 || anyNull(x, y, z, rx, ry, rz, ignored1, ignored2, eventCode, extra1, extra2))
    return Daemon::kFailure;
  Event event;
  const std::int32_t status = Daemon::instance().fetchEvent(devIdx, event);
  if (status != Daemon::kSuccess) return status;
  std::int16_t* const axes[] = {x, y, z, rx, ry, rz};
  for (std::size_t i = 0; i < event.axes.size(); ++i) *axes[i] = event.axes[i];
  *ignored1 = 0;
  *ignored2 = 0;
  *eventCode = event.code;
  *extra1 = event.extra1;
  *extra2 = event.extra2;
  return Daemon::kSuccess;
}

std::int32_t lmGetAdvancedSettings(std::int32_t devIdx, LmAdvancedSettings* record) {
  return Daemon::instance().operate(Operation::kGetAdvancedSettings, [=](const DaemonState& state) {
    if (record == nullptr || !hasDevice(state, devIdx)) return Daemon::kFailure;
    *record = {};
    record->rotationMode = state.rotationMode;
    record->zoomAfterView = state.zoomAfterView;
    return Daemon::kSuccess;
  });
}

std::int32_t lmGetDevInfo(std::int32_t devIdx, LmDevInfo* record) {
  return Daemon::instance().operate(Operation::kGetDevInfo, [=](const DaemonState& state) {
    if (record == nullptr || !hasDevice(state, devIdx)) return Daemon::kFailure;
    *record = {};
    state.devices[static_cast<std::size_t>(devIdx)].copy(record->name, sizeof record->name - 1);
    return Daemon::kSuccess;
  });
}

std::int32_t lmGetDevNum(std::int32_t* count, std::int32_t* ignored1, std::int32_t* ignored2) {
  return Daemon::instance().operate(Operation::kGetDevNum, [=](const DaemonState& state) {
    if (anyNull(count, ignored1, ignored2)) return Daemon::kFailure;
    *count = static_cast<std::int32_t>(state.devices.size());
    *ignored1 = 0;
    *ignored2 = 0;
    return Daemon::kSuccess;
  });
}

std::int32_t lmSetApplMode(const char* applName, const char* modeName) {
  return Daemon::instance().operate(Operation::kSetApplMode, [=](DaemonState& state) {
    if (anyNull(applName, modeName)) return Daemon::kFailure;
    state.applModes.push_back({applName, modeName});
    return Daemon::kSuccess;
  });
}
