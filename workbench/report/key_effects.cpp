#include "workbench/report/key_effects.h"

#include "device/special_functions.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>

namespace workbench {
namespace {

// Allows for the rounding of a normalised vector, far below an angle that can be seen.
constexpr double kAlongAnAxis = 1 - 1e-9;

/// None when the event is no key.
std::optional<std::string> keyName(std::int32_t code, const std::vector<ReportFunction>& functions) {
  if (const SpecialFunction* const functionP = findSpecialFunction(code))
    return std::string("key ") + functionP->nameP;
  // Motion and announcements are no keys. Application functions have no upper limit.
  if (code < APPL_FUNC_START) return std::nullopt;
  const auto number = static_cast<std::size_t>(code - APPL_FUNC_START);
  const std::string name = "function " + std::to_string(number);
  return number < functions.size() ? name + ": " + functions[number].label : name + ": there is none";
}

std::string format(const char* pattern, double a, double b, double c = 0) {
  char text[100];
  std::snprintf(text, sizeof text, pattern, a, b, c);
  return text;
}

std::string directionInWords(const standin::host::Camera& camera) {
  const AcGeVector3d from = (camera.position - camera.target).normalize();
  if (from.x > kAlongAnAxis) return "from the right";
  if (from.x < -kAlongAnAxis) return "from the left";
  // The front view looks along +y, so its camera is at negative y.
  if (from.y > kAlongAnAxis) return "from behind";
  if (from.y < -kAlongAnAxis) return "from the front";
  if (from.z > kAlongAnAxis) return "from above";
  if (from.z < -kAlongAnAxis) return "from below";
  return format("from (%.2f, %.2f, %.2f)", from.x, from.y, from.z);
}

std::vector<ReportKey> keysOf(const Session& session, const std::vector<ReportFunction>& functions) {
  std::vector<ReportKey> keys;
  for (const TimedDeviceAction& event : session.device) {
    const auto* const eventP = std::get_if<DeviceEvent>(&event.action);
    const auto name = eventP == nullptr ? std::nullopt : keyName(eventP->code, functions);
    if (!name) continue;
    if (keys.empty() || keys.back().timeMs != event.timeMs)
      keys.push_back({event.timeMs, *name, {}, {}});
    else
      // Keys of one time share their effects, since no output says which of them had which.
      keys.back().name += ", " + *name;
  }
  return keys;
}

/// First entry of a list in order of time that is not before `timeMs`.
template <typename List>
auto firstFrom(const List& list, std::int64_t timeMs) {
  return std::lower_bound(list.begin(), list.end(), timeMs,
                          [](const auto& entry, std::int64_t time) { return entry.timeMs < time; });
}

/// End of what counts as the effect of a key at `timeMs`, exclusive.
std::int64_t endOfEffect(const Session& session, std::int64_t timeMs, std::int64_t nextKeyMs) {
  // A user's event at the key's own time does not end the effect, which would leave nothing of it.
  const auto next = firstFrom(session.user, timeMs + 1);
  return next == session.user.end() ? nextKeyMs : std::min(next->timeMs, nextKeyMs);
}

void addEffects(ReportKey& key, std::int64_t endMs, const Recording& recording) {
  const auto& lines = recording.commandLine;
  for (auto line = firstFrom(lines, key.timeMs); line != lines.end() && line->timeMs < endMs; ++line)
    if (line->kind == LineKind::kSend || line->kind == LineKind::kSendActivate)
      key.sent.push_back(line->text);
  const auto& rows = recording.rows;
  for (auto row = firstFrom(rows, key.timeMs); row != rows.end() && row->timeMs < endMs; ++row)
    // The last view counts; an animated change writes several.
    if (row->kind == RowKind::kView) key.view = viewInWords(*row);
}

}  // namespace

std::string viewInWords(const TrajectoryRow& row) {
  const standin::host::Camera& camera = row.camera;
  const std::string size = format(", %.4g x %.4g", camera.fieldWidth, camera.fieldHeight);
  if (row.isPaper)
    return format("the sheet around (%.4g, %.4g)", camera.position.x, camera.position.y) + size;
  return directionInWords(camera) + size + (camera.isPerspective ? ", perspective" : "");
}

std::vector<ReportKey> keyEffects(const Session& session, const Recording& recording,
                                  const std::vector<ReportFunction>& functions) {
  std::vector<ReportKey> keys = keysOf(session, functions);
  for (std::size_t i = 0; i < keys.size(); ++i) {
    const bool isLast = i + 1 == keys.size();
    // The last key's effect lasts to the end of the run.
    const std::int64_t next = isLast ? std::numeric_limits<std::int64_t>::max() : keys[i + 1].timeMs;
    addEffects(keys[i], endOfEffect(session, keys[i].timeMs, next), recording);
  }
  return keys;
}

}  // namespace workbench
