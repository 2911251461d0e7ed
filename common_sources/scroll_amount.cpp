#include "common_sources/scroll_amount.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {
constexpr std::array<std::string_view, 5> kScrollBarClasses{"SysTreeView32", "TreeView", "SysListView32",
                                                            "ListBox", "Edit"};
constexpr std::string_view kWheelClass = "QWidget";
// Waits throttle the caller, who comes back at once: the stronger the deflection, the faster the scrolling.
constexpr int kLongestWaitMs = 150;
constexpr int kShortestWaitMs = 1;
constexpr int kShortList = 50;
// Long lists move several lines a pass.
constexpr int kRangePerMessage = 100;
constexpr int kMostMessages = 10;
}  // namespace

ScrollKind scrollKind(std::string_view className) {
  for (const std::string_view part : kScrollBarClasses)
    if (className.find(part) != std::string_view::npos) return ScrollKind::kScrollBar;
  return className == kWheelClass ? ScrollKind::kWheel : ScrollKind::kNone;
}

ScrollAmount scrollAmount(int x, int y, int z) {
  // Tilting forwards (y > 0) scrolls up.
  return {x, std::abs(z) < std::abs(y) ? -y : z};
}

int strength(const ScrollAmount& amount) {
  return std::max(std::abs(amount.horizontal), std::abs(amount.vertical));
}

bool isUsable(const ScrollRange& range) {
  return range.minimum >= 0 && range.maximum >= 0 && range.minimum < range.maximum && range.page != 0;
}

int lineCount(const ScrollRange& range) {
  return std::clamp(range.maximum / kRangePerMessage, 1, kMostMessages);
}

bool isScrollable(const ScrollRange& range, int amount) {
  // Compared with 0, not with the minimum of the range.
  if (amount < 0) return range.position > 0;
  // Wider than the parts: a page is unsigned and may be as large as the range.
  return static_cast<long long>(range.page) + range.position <= range.maximum;
}

int scrollWaitMs(const ScrollAmount& amount) {
  // Half a millisecond less for each unit, so a deflection of 298 or more gives the shortest wait.
  return std::max(kLongestWaitMs - strength(amount) / 2, kShortestWaitMs);
}

int shortListWaitMs(const ScrollRange& range) {
  return std::max(kShortList - range.maximum, 0);
}
