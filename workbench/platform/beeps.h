/// The beeps of a library. Windows tells nobody of a beep, so the library's own calls are led through here on
/// their way to the system, where they sound as ever. Windows only; main thread.
#ifndef WORKBENCH_BEEPS_H
#define WORKBENCH_BEEPS_H

#include <windows.h>

#include <functional>

namespace workbench {

/// Hears the beeps of `library` until it is freed. Nothing happens when it does not import Beep, or its
/// imports cannot be changed.
void hearBeeps(HMODULE library);

/// Hertz and milliseconds of every beep that is heard, before it sounds; an empty listener ends that.
void listenToBeeps(std::function<void(DWORD, DWORD)> listener);

}  // namespace workbench

#endif
