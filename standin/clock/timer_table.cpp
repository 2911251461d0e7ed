#include "timer_table.h"

#include <algorithm>
#include <utility>

namespace standin::clock {

std::uintptr_t TimerTable::set(std::uintptr_t wanted, std::int64_t nowMs, std::uint32_t periodMs,
                               TimerProc proc) {
  const std::uintptr_t id = mTimers.count(wanted) != 0 ? wanted : ++mLastId;
  mTimers[id] = {nowMs + periodMs, periodMs, std::move(proc)};
  return id;
}

bool TimerTable::kill(std::uintptr_t id) {
  return mTimers.erase(id) != 0;
}

std::map<std::uintptr_t, TimerTable::Timer>::const_iterator TimerTable::earliest() const {
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
