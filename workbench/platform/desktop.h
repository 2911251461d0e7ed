/// The user's desktop as far as a session touches it: what is under the mouse pointer, and what the module
/// shows or sounds outside the drawing.
#ifndef WORKBENCH_DESKTOP_H
#define WORKBENCH_DESKTOP_H

#include "workbench/report/report.h"
#include "workbench/sessions/session.h"

#include <functional>
#include <string>

namespace workbench {

/// A message box or a beep, ready to be listed.
struct DesktopMessage {
  bool isBeep = false;
  std::wstring text;  ///< of a box: the caption, a line feed, the text; of a beep: "440 Hz, 200 ms"
};

/// A desktop as new: no listener, the pointer on the drawing canvas. Main thread.
void resetDesktop();

/// `listener` is called for every message, on the thread that sends it; an empty one removes it.
void listenToDesktop(std::function<void(const DesktopMessage&)> listener);

/// Moves the mouse pointer onto a control of that kind. Main thread.
void movePointer(PointerTarget target);

/// The windows and the pointer as they are now. Main thread.
ReportDesktop desktopState();

/// Whether standard error is a terminal.
bool isErrorTerminal();

}  // namespace workbench

#endif
