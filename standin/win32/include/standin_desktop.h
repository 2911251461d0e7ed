/// A simulated desktop for the native build: nested windows, their scroll bars, the mouse pointer, and
/// a record of the messages sent to them. Main thread only, and so are the Windows functions that read it.
#ifndef STANDIN_DESKTOP_H
#define STANDIN_DESKTOP_H

#include "windows.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace standin::desktop {

/// A scroll bar: the position is between `minimum` and `maximum` - `page` + 1 (a page of 0 counts as 1).
struct ScrollBar {
  int minimum = 0;
  int maximum = 0;
  UINT page = 0;
  int position = 0;
};

struct WindowSpec {
  std::wstring className;
  HWND parent = nullptr;  ///< null for a top-level window
  RECT rect{};            ///< screen coordinates; what is outside the parent's is not seen
  bool isShown = true;
  std::optional<ScrollBar> vertical;
  std::optional<ScrollBar> horizontal;
  /// Draws its scroll bars itself, as a Qt widget does: GetScrollInfo finds none and scroll-bar messages
  /// do nothing; the wheel moves the vertical one.
  bool isOwnScrolling = false;
  bool isEnabled = true;  ///< a disabled window and what is in it do not catch the pointer
  HWND owner = nullptr;   ///< of a top-level window, which stays in front of it
};

/// Returns the window's handle; null when the parent or the owner is no window. As on Windows, a new
/// top-level window comes on top of the others, a new child below its siblings.
STANDIN_WIN32_API HWND createWindow(const WindowSpec& spec);

/// Destroys the window, what is in it and what it owns. False when it is no window, here and below.
STANDIN_WIN32_API bool destroyWindow(HWND window);

/// An empty desktop: no windows, the pointer at the origin, nothing recorded.
STANDIN_WIN32_API void clear();

STANDIN_WIN32_API bool setShown(HWND window, bool isShown);

STANDIN_WIN32_API bool setEnabled(HWND window, bool isEnabled);

/// On top of its siblings; what it owns stays in front of it.
STANDIN_WIN32_API bool raise(HWND window);

STANDIN_WIN32_API void setPointer(POINT point);

/// `bar` is SB_VERT or SB_HORZ. None when the window has no such bar; one that it draws itself counts
/// too.
STANDIN_WIN32_API std::optional<ScrollBar> scrollBar(HWND window, int bar);
STANDIN_WIN32_API bool setScrollBar(HWND window, int bar, const ScrollBar& state);

struct SentMessage {
  HWND window = nullptr;
  UINT message = 0;
  WPARAM wParam = 0;
  LPARAM lParam = 0;
};

/// What SendMessageW was given since clear() or clearSentMessages(), oldest first.
STANDIN_WIN32_API std::vector<SentMessage> sentMessages();
STANDIN_WIN32_API void clearSentMessages();

/// Calls of UpdateWindow for this window.
STANDIN_WIN32_API std::size_t updates(HWND window);

/// Windows of the ready-made desktop: a frame with the canvas and a palette, in which there are a tree, a
/// list (with a group box in front of it), an edit field and a Qt widget.
struct StandardDesktop {
  HWND frame = nullptr;
  HWND canvas = nullptr;
  HWND palette = nullptr;
  HWND tree = nullptr;   ///< lines 0 ... 2000, 40 in view
  HWND group = nullptr;  ///< in front of the list, and larger
  HWND list = nullptr;   ///< lines 0 ... 150, 20 in view
  HWND edit = nullptr;   ///< lines 0 ... 60, 10 in view; columns 0 ... 300, 80 in view
  HWND qt = nullptr;     ///< lines 0 ... 500, 20 in view, of its own
};

/// Clears the desktop and makes the standard one, the pointer over the canvas.
STANDIN_WIN32_API StandardDesktop makeStandardDesktop();

/// Moves the pointer over a window of the standard desktop: "canvas", "tree", "list", "edit", "qt", or off
/// all windows: "none". False, and the pointer stays, for any other place.
STANDIN_WIN32_API bool pointAt(const std::string& place);

}  // namespace standin::desktop

#endif
