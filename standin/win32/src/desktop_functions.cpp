/// The Windows functions that look at the desktop.
#include "desktop.h"
#include "operations.h"
#include "windows.h"

#include <algorithm>

using standin::Result;
using standin::desktop::Desktop;
using standin::desktop::ScrollBar;
using standin::desktop::Window;
using standin::windows::Operation;

namespace {

const Operation kGetCursorPos("GetCursorPos", Result::kTellsFailure);
const Operation kWindowFromPoint("WindowFromPoint", Result::kTellsFailure);
const Operation kGetWindowRect("GetWindowRect", Result::kTellsFailure);
const Operation kGetClassName("GetClassNameW", Result::kTellsFailure);
const Operation kGetScrollInfo("GetScrollInfo", Result::kTellsFailure);
const Operation kSendMessage("SendMessageW", Result::kTellsNothing);

Window* find(HWND window) {
  return Desktop::instance().find(window);
}

/// The window `step` places after this one in the order of its siblings, null beyond the ends.
HWND sibling(HWND handle, const Window& window, int step) {
  const std::vector<HWND>& order = Desktop::instance().siblings(window);
  const auto place = std::find(order.begin(), order.end(), handle) - order.begin() + step;
  // No wrap: the module walks until it gets null.
  return place < 0 || place >= static_cast<std::ptrdiff_t>(order.size())
             ? nullptr
             : order[static_cast<std::size_t>(place)];
}

HWND rootOf(HWND handle) {
  while (find(handle)->spec.parent != nullptr) handle = find(handle)->spec.parent;
  return handle;
}

}  // namespace

BOOL GetCursorPos(LPPOINT point) {
  if (kGetCursorPos.hit() || point == nullptr) return FALSE;
  *point = Desktop::instance().pointer;
  return TRUE;
}

HWND WindowFromPoint(POINT point) {
  return kWindowFromPoint.hit() ? nullptr : Desktop::instance().at(point);
}

BOOL GetWindowRect(HWND window, LPRECT rect) {
  const Window* const found = find(window);
  if (kGetWindowRect.hit() || found == nullptr || rect == nullptr) return FALSE;
  *rect = found->spec.rect;
  return TRUE;
}

HWND GetParent(HWND window) {
  const Window* const found = find(window);
  if (found == nullptr) return nullptr;
  // Despite its name the function returns the owner of a top-level window.
  return found->spec.parent != nullptr ? found->spec.parent : found->spec.owner;
}

HWND GetWindow(HWND window, UINT command) {
  const Window* const found = find(window);
  if (found == nullptr) return nullptr;
  switch (command) {
    case GW_HWNDFIRST:
      return Desktop::instance().siblings(*found).front();
    case GW_HWNDLAST:
      return Desktop::instance().siblings(*found).back();
    case GW_HWNDNEXT:
      return sibling(window, *found, 1);
    case GW_HWNDPREV:
      return sibling(window, *found, -1);
    case GW_CHILD:
      return found->children.empty() ? nullptr : found->children.front();
    case GW_OWNER:
      return found->spec.owner;
    default:
      return nullptr;
  }
}

BOOL PtInRect(const RECT* rect, POINT point) {
  if (rect == nullptr) return FALSE;
  // The right and bottom edges are outside, so that neighbours share no point.
  const bool isInside =
      point.x >= rect->left && point.x < rect->right && point.y >= rect->top && point.y < rect->bottom;
  return isInside ? TRUE : FALSE;
}

BOOL IsWindowVisible(HWND window) {
  return Desktop::instance().isVisible(window) ? TRUE : FALSE;
}

/// GA_PARENT never gives the owner, unlike GetParent; GA_ROOTOWNER follows both, so it uses GetParent.
HWND GetAncestor(HWND window, UINT flags) {
  const Window* const found = find(window);
  if (found == nullptr) return nullptr;
  switch (flags) {
    case GA_PARENT:
      return found->spec.parent;
    case GA_ROOT:
      return rootOf(window);
    case GA_ROOTOWNER:
      while (GetParent(window) != nullptr) window = GetParent(window);
      return window;
    default:
      return nullptr;
  }
}

int GetClassNameW(HWND window, LPWSTR name, int size) {
  const Window* const found = find(window);
  if (kGetClassName.hit() || found == nullptr || name == nullptr || size <= 0) return 0;
  // A name that is too long is cut, and the length of what was stored is returned: no failure.
  const std::size_t length = found->spec.className.copy(name, static_cast<std::size_t>(size) - 1);
  name[length] = L'\0';
  return static_cast<int>(length);
}

BOOL GetScrollInfo(HWND window, int bar, LPSCROLLINFO info) {
  Window* const found = find(window);
  // A widget that draws its own bars has none that the system knows of.
  if (kGetScrollInfo.hit() || found == nullptr || found->spec.isOwnScrolling) return FALSE;
  const ScrollBar* const held = found->bar(bar);
  // Windows refuses a record whose size the caller did not set.
  if (held == nullptr || info == nullptr || info->cbSize != sizeof(SCROLLINFO)) return FALSE;
  if ((info->fMask & SIF_RANGE) != 0) {
    info->nMin = held->minimum;
    info->nMax = held->maximum;
  }
  if ((info->fMask & SIF_PAGE) != 0) info->nPage = held->page;
  if ((info->fMask & SIF_POS) != 0) info->nPos = held->position;
  // Nobody drags the scroll box here, so its tracking position is the position itself.
  if ((info->fMask & SIF_TRACKPOS) != 0) info->nTrackPos = held->position;
  return TRUE;
}

/// Scroll messages and the wheel have no result that a sender could use: 0 in any case.
LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  kSendMessage.hit();
  Desktop::instance().send({window, message, wParam, lParam});
  return 0;
}

BOOL UpdateWindow(HWND window) {
  Window* const found = find(window);
  if (found == nullptr) return FALSE;
  // Counted, not drawn: tests check that a scrolled control is repainted at once.
  ++found->updates;
  return TRUE;
}
