#include "common_sources/control_scrolling.h"

#include "common_sources/scroll_amount.h"
#include "common_sources/window_search.h"
#include "util/threads.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

using ClassName = std::array<char, 261>;

/// The window's class name in the ANSI code page, blanks for what it does not hold, cut to what fits.
ClassName windowClass(HWND window) {
  std::array<wchar_t, 510> wide{};
  ClassName narrow{};
  const int read = GetClassNameW(window, wide.data(), static_cast<int>(wide.size()));
  const int length = std::min(read, static_cast<int>(narrow.size()) - 1);
  const int size = static_cast<int>(narrow.size()) - 1;
  // UTF-8 as the ANSI code page refuses a replacement, and needs none.
  if (WideCharToMultiByte(CP_ACP, 0, wide.data(), length, narrow.data(), size, " ", nullptr) == 0)
    WideCharToMultiByte(CP_ACP, 0, wide.data(), length, narrow.data(), size, nullptr, nullptr);
  return narrow;
}

ScrollRange scrollRange(HWND window, int bar) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_TRACKPOS;
  // A failure leaves zeros, and such a range is not usable.
  GetScrollInfo(window, bar, &info);
  return {info.nMin, info.nMax, info.nPage, info.nPos};
}

void wait(int ms) {
  sleepMs(static_cast<std::uint32_t>(ms));
}

/// False when the bar that the deflection asks for cannot be scrolled.
bool scrollByLines(HWND window, const ScrollAmount& amount) {
  const int horizontal = std::abs(amount.horizontal), vertical = std::abs(amount.vertical);
  // A tie names no direction. It still counts as scrolling, so that the drawing stays where it is.
  if (horizontal == vertical) return true;
  const bool isVertical = horizontal < vertical;
  const ScrollRange range = scrollRange(window, isVertical ? SB_VERT : SB_HORZ);
  // A list without a scroll bar: the cap moves the drawing instead.
  if (!isUsable(range)) return false;
  const int lines = isVertical ? amount.vertical : amount.horizontal;
  const WPARAM backward = isVertical ? SB_LINEUP : SB_LINELEFT;
  const WPARAM forward = isVertical ? SB_LINEDOWN : SB_LINERIGHT;
  // The position is read once: a control ignores the messages that would leave its range.
  if (isScrollable(range, lines))
    for (int i = lineCount(range); i > 0; --i)
      SendMessageW(window, isVertical ? WM_VSCROLL : WM_HSCROLL, lines < 0 ? backward : forward, 0);
  // Also at the end of the list: otherwise the loop of passes would spin.
  wait(scrollWaitMs(amount) + shortListWaitMs(range));
  return true;
}

void scrollByWheel(HWND window, POINT pointer, const ScrollAmount& amount) {
  const int horizontal = std::abs(amount.horizontal), vertical = std::abs(amount.vertical);
  if (horizontal != vertical) {
    const int stronger = horizontal < vertical ? amount.vertical : amount.horizontal;
    // A wheel that is turned away from the user, a positive delta, scrolls up.
    const int turn = stronger < 0 ? WHEEL_DELTA : -WHEEL_DELTA;
    SendMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(turn)),
                 MAKELPARAM(static_cast<WORD>(pointer.x), static_cast<WORD>(pointer.y)));
    // Paints at once: the main thread is in the loop of passes and handles no paint messages.
    UpdateWindow(window);
  }
  wait(scrollWaitMs(amount));
}

}  // namespace

bool scrollControlUnderPointer(int x, int y, int z) {
  POINT pointer{};
  // Fails on the secure desktop, for example while the screen is locked.
  if (!GetCursorPos(&pointer)) return false;
  const HWND window = smallestWindowAt(pointer);
  if (window == nullptr) return false;
  const ScrollAmount amount = scrollAmount(x, y, z);
  switch (scrollKind(windowClass(window).data())) {
    case ScrollKind::kNone:
      return false;
    case ScrollKind::kScrollBar:
      return scrollByLines(window, amount);
    case ScrollKind::kWheel:
      scrollByWheel(window, pointer, amount);
      return true;
  }
  return false;
}
