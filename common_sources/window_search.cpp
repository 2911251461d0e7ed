#include "common_sources/window_search.h"

#include <cstdint>

namespace {

/// Wider than a side, and each side before it is subtracted: a window may reach over all coordinates.
std::int64_t area(const RECT& rect) {
  const std::int64_t width = std::int64_t{rect.right} - rect.left;
  return width * (std::int64_t{rect.bottom} - rect.top);
}

struct Search {
  POINT mPoint;
  HWND mParent;
  HWND mBest;
  RECT mBestRect;

  /// Scans `window` and those that follow it in z-order; true when one of them became the best.
  bool scan(HWND window) {
    const HWND before = mBest;
    for (; window != nullptr; window = GetWindow(window, GW_HWNDNEXT)) {
      RECT rect{};
      if (!GetWindowRect(window, &rect) || !PtInRect(&rect, mPoint)) continue;
      // Strictly smaller: of equal windows the upper one wins.
      if (GetParent(window) != mParent || !IsWindowVisible(window) || area(rect) >= area(mBestRect)) continue;
      mBest = window;
      mBestRect = rect;
    }
    return mBest != before;
  }
};

}  // namespace

HWND smallestWindowAt(POINT point) {
  const HWND window = WindowFromPoint(point);
  if (window == nullptr) return nullptr;
  Search search{point, GetParent(window), window, {}};
  GetWindowRect(window, &search.mBestRect);
  // A top-level window: its neighbours may belong to other programs.
  if (search.mParent == nullptr) return window;
  HWND next = GetWindow(window, GW_HWNDNEXT);
  // Descends into the best window until no child under the point is smaller.
  while (search.scan(next)) {
    next = GetWindow(search.mBest, GW_CHILD);
    search.mParent = search.mBest;
  }
  return search.mBest;
}
