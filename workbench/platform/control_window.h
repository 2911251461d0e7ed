/// A real window with the controls that a session can move the pointer to: a drawing canvas, a tree, a list,
/// a list box, a multi-line edit field and a widget that scrolls itself. Windows build only; the thread that
/// makes it owns it.
#ifndef WORKBENCH_CONTROL_WINDOW_H
#define WORKBENCH_CONTROL_WINDOW_H

#include <windows.h>

namespace workbench {

class ControlWindow {
 public:
  /// Shows the window on top of all others. Throws std::runtime_error when the system makes no window.
  ControlWindow();
  ~ControlWindow();
  ControlWindow(const ControlWindow&) = delete;
  ControlWindow& operator=(const ControlWindow&) = delete;

  HWND canvas() const { return mCanvas; }
  HWND tree() const { return mTree; }        ///< 200 lines
  HWND list() const { return mList; }        ///< list view, 200 lines
  HWND listBox() const { return mListBox; }  ///< 200 lines, below a group box in z-order
  HWND edit() const { return mEdit; }        ///< 200 lines, wider than the field
  HWND widget() const { return mWidget; }    ///< scrolls by the wheel only, as a "QWidget" does

  /// Puts the mouse pointer on the middle of one of the controls; null: off the window.
  void pointAt(HWND control) const;

  /// Wheel messages that the widget was given, forward less backward.
  int wheelTurns() const;

 private:
  HWND add(const wchar_t* className, DWORD style, int column, int row) const;
  void fill() const;

  HWND mFrame = nullptr;
  HWND mCanvas = nullptr;
  HWND mTree = nullptr;
  HWND mList = nullptr;
  HWND mListBox = nullptr;
  HWND mGroup = nullptr;
  HWND mEdit = nullptr;
  HWND mWidget = nullptr;
};

}  // namespace workbench

#endif
