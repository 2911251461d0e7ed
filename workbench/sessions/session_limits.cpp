#include "workbench/sessions/session_limits.h"

#include "workbench/input_error.h"

#include <algorithm>

namespace workbench {
namespace {

bool isDeflected(const DeviceEvent& motion) {
  return std::any_of(motion.axes.begin(), motion.axes.end(), [](std::int16_t value) { return value != 0; });
}

}  // namespace

void checkMotion(const Session& session, std::uint32_t frameMs) {
  const std::int64_t mostMs = kMostPasses * frameMs;
  std::int64_t movingMs = 0;
  const TimedDeviceAction* beforeP = nullptr;  // the motion that lasts until the next one
  const auto endAt = [&](std::int64_t timeMs) {
    if (beforeP == nullptr || !isDeflected(std::get<DeviceEvent>(beforeP->action))) return;
    movingMs += timeMs - beforeP->timeMs;
    if (movingMs > mostMs)
      throw InputError({session.file, beforeP->line},
                       "a cap that is deflected for at most " + std::to_string(mostMs) + " ms in all (" +
                           std::to_string(kMostPasses) + " drawing calls)",
                       "one that still is after that");
  };
  for (const TimedDeviceAction& event : session.device) {
    const auto* const motionP = std::get_if<DeviceEvent>(&event.action);
    // Keys and announcements leave the cap where it is.
    if (motionP == nullptr || motionP->code >= 0) continue;
    endAt(event.timeMs);
    beforeP = &event;
  }
  endAt(session.endMs);
}

}  // namespace workbench
