/// The beeps of a library. Windows has no notification for a beep, so the library's import of Beep is
/// replaced by a function that reports the call and passes it on. Windows only; main thread.
#ifndef WORKBENCH_BEEPS_H
#define WORKBENCH_BEEPS_H

#include <windows.h>

#include <functional>

namespace workbench {

/// Intercepts the beeps of `library` until it is freed. Does nothing when it does not import Beep, or its
/// imports cannot be changed.
void interceptBeeps(HMODULE library);

/// Hertz and milliseconds of every intercepted beep, before it sounds; an empty function removes the
/// listener.
void listenToBeeps(std::function<void(DWORD, DWORD)> listener);

}  // namespace workbench

#endif
