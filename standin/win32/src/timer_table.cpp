#include "timer_table.h"

#include <algorithm>

namespace standin::clock {

UINT_PTR TimerTable::set(UINT_PTR wanted, std::int64_t nowMs, std::uint32_t periodMs, TIMERPROC proc) {
  const auto period = std::clamp<std::int64_t>(periodMs, USER_TIMER_MINIMUM, USER_TIMER_MAXIMUM);
  const UINT_PTR id = mTimers.count(wanted) != 0 ? wanted : ++mLastId;
  mTimers[id] = {nowMs + period, period, proc};
  return id;
}

bool TimerTable::kill(UINT_PTR id) {
  return mTimers.erase(id) != 0;
}

std::map<UINT_PTR, TimerTable::Timer>::const_iterator TimerTable::earliest() const {
  return std::min_element(mTimers.begin(), mTimers.end(),
                          [](const auto& a, const auto& b) { return a.second.dueMs < b.second.dueMs; });
}

std::optional<std::int64_t> TimerTable::next() const {
  if (mTimers.empty()) return std::nullopt;
  return earliest()->second.dueMs;
}

std::optional<TimerTable::Due> TimerTable::takeDue(std::int64_t nowMs) {
  if (mTimers.empty()) return std::nullopt;
  const auto found = earliest();
  if (found->second.dueMs > nowMs) return std::nullopt;
  Timer& timer = mTimers[found->first];
  timer.dueMs = nowMs + timer.periodMs;
  return Due{found->first, timer.proc};
}

}  // namespace standin::clock
