/// A desktop without windows: no handle is a window, the pointer rests at the origin.
#include "windows.h"

BOOL GetCursorPos(LPPOINT point) {
  if (point == nullptr) return FALSE;
  *point = {0, 0};
  return TRUE;
}

HWND WindowFromPoint(POINT) {
  return nullptr;
}
BOOL GetWindowRect(HWND, LPRECT) {
  return FALSE;
}
HWND GetParent(HWND) {
  return nullptr;
}
HWND GetWindow(HWND, UINT) {
  return nullptr;
}
BOOL IsWindowVisible(HWND) {
  return FALSE;
}
HWND GetAncestor(HWND, UINT) {
  return nullptr;
}
int GetClassNameW(HWND, LPWSTR, int) {
  return 0;
}
BOOL GetScrollInfo(HWND, int, LPSCROLLINFO) {
  return FALSE;
}
LRESULT SendMessageW(HWND, UINT, WPARAM, LPARAM) {
  return 0;
}
BOOL UpdateWindow(HWND) {
  return FALSE;
}

BOOL PtInRect(const RECT* rect, POINT point) {
  if (rect == nullptr) return FALSE;
  const bool isInside =
      point.x >= rect->left && point.x < rect->right && point.y >= rect->top && point.y < rect->bottom;
  return isInside ? TRUE : FALSE;
}
