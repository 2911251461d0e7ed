#include "workbench/platform/desktop.h"
#include "workbench/text_input.h"

#include <windows.h>

#include <optional>

namespace workbench {
namespace {

std::optional<ReportScrollBar> barOf(HWND window, int which) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  // A window without that bar makes the call fail; one with nothing to scroll has an empty range.
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  if (!GetScrollInfo(window, which, &info) || info.nMin >= info.nMax) return std::nullopt;
  return ReportScrollBar{info.nMin, info.nMax, static_cast<int>(info.nPage), info.nPos};
}

ReportWindow windowState(HWND window) {
  // Longer class names are cut off by the system; the report only shows them.
  wchar_t name[64] = {};
  RECT rect{};
  GetClassNameW(window, name, 64);
  GetWindowRect(window, &rect);
  return {toUtf8(std::wstring_view(name)),
          {static_cast<int>(rect.left), static_cast<int>(rect.top), static_cast<int>(rect.right),
           static_cast<int>(rect.bottom)},
          barOf(window, SB_VERT),
          barOf(window, SB_HORZ)};
}

BOOL CALLBACK addWindow(HWND window, LPARAM state) {
  if (IsWindowVisible(window))
    reinterpret_cast<ReportDesktop*>(state)->windows.push_back(windowState(window));
  return TRUE;
}

}  // namespace

/// Only windows of this thread: the report must not show what else is on the user's desktop.
ReportDesktop desktopState() {
  ReportDesktop state;
  EnumThreadWindows(
      GetCurrentThreadId(),
      [](HWND window, LPARAM stateP) -> BOOL {
        // EnumThreadWindows gives top-level windows only, so the children are listed after each of them.
        if (!addWindow(window, stateP)) return FALSE;
        if (IsWindowVisible(window)) EnumChildWindows(window, addWindow, stateP);
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&state));
  POINT pointer{};
  GetCursorPos(&pointer);
  state.pointer = {static_cast<int>(pointer.x), static_cast<int>(pointer.y)};
  return state;
}

}  // namespace workbench
