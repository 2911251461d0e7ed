/// The windows that `standin_desktop.h` and the Windows functions work on. Main thread.
#ifndef STANDIN_WIN32_DESKTOP_H
#define STANDIN_WIN32_DESKTOP_H

#include "standin_desktop.h"

#include <map>
#include <vector>

namespace standin::desktop {

struct Window {
  WindowSpec spec;
  std::vector<HWND> children;  ///< topmost first
  std::size_t updates = 0;

  /// The bar of `bar`, null when the window has none of the kind.
  ScrollBar* bar(int bar);
};

class Desktop {
 public:
  static Desktop& instance();

  HWND create(const WindowSpec& spec);
  bool destroy(HWND handle);
  bool raise(HWND handle);
  void clear();

  /// Null when the handle is no window.
  Window* find(HWND handle);
  /// Siblings of the window, itself included, topmost first.
  std::vector<HWND>& siblings(const Window& window);
  /// Topmost top-level or child window seen at the point; null when there is none.
  HWND at(POINT point);
  bool isVisible(HWND handle);

  /// Records the message and scrolls the window as it asks.
  void send(const SentMessage& message);

  POINT pointer{0, 0};
  std::vector<SentMessage> sent;

 private:
  /// What the window owns, topmost first.
  std::vector<HWND> ownedBy(HWND handle);
  HWND topmostAt(const std::vector<HWND>& windows, POINT point);
  void turnWheel(HWND handle, int delta);

  std::map<HWND, Window> mWindows;
  std::vector<HWND> mTopLevel;
  UINT_PTR mLastHandle = 0x10000;
};

}  // namespace standin::desktop

#endif
