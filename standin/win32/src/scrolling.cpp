/// Scroll positions after messages, limited as Windows limits them.
#include "scrolling.h"

#include <algorithm>

namespace standin::desktop {
namespace {

int pageOf(const ScrollBar& bar) {
  // A page of 0 means that the page size is unknown: PAGEUP and PAGEDOWN then move by a line.
  return std::max(static_cast<int>(bar.page), 1);
}

ScrollBar movedBy(ScrollBar bar, int lines) {
  bar.position += lines;
  return limited(bar);
}

}  // namespace

/// The last page ends at the maximum itself, so a page of one line reaches it; a range that is all in view
/// leaves only the minimum.
ScrollBar limited(ScrollBar bar) {
  const int last = std::max(bar.minimum, bar.maximum - pageOf(bar) + 1);
  bar.position = std::clamp(bar.position, bar.minimum, last);
  return bar;
}

ScrollBar scrolledBy(const ScrollBar& bar, WORD code) {
  switch (code) {
    case SB_LINEUP:
      return movedBy(bar, -1);
    case SB_LINEDOWN:
      return movedBy(bar, 1);
    case SB_PAGEUP:
      return movedBy(bar, -pageOf(bar));
    case SB_PAGEDOWN:
      return movedBy(bar, pageOf(bar));
    case SB_TOP:
      return movedBy(bar, bar.minimum - bar.position);
    case SB_BOTTOM:
      // Beyond the last page on purpose: movedBy() limits it.
      return movedBy(bar, bar.maximum - bar.position);
    default:
      return bar;
  }
}

ScrollBar wheeledBy(const ScrollBar& bar, int delta) {
  // Three lines a notch is the system's default setting. A turn away from the user is positive and shows what
  // is above, hence the minus sign. What is less than a line is dropped, not kept for the next turn.
  constexpr int kLinesOfATurn = 3;
  return movedBy(bar, -delta * kLinesOfATurn / WHEEL_DELTA);
}

}  // namespace standin::desktop
