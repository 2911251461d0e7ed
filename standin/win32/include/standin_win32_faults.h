/// Misbehaviour of the Windows functions on demand. Any thread.
#ifndef STANDIN_WIN32_FAULTS_H
#define STANDIN_WIN32_FAULTS_H

#include "standin/fault_point.h"
#include "standin_win32_api.h"

namespace standin::windows {

/// Faults by the functions' names: SetTimer, KillTimer, GetTickCount (can only throw), Beep, MessageBoxW,
/// GetModuleFileNameW, WideCharToMultiByte, GetCursorPos, WindowFromPoint, GetWindowRect, GetClassNameW,
/// GetScrollInfo, SendMessageW (can only throw). A failing function returns 0, FALSE or null and does
/// nothing.
STANDIN_WIN32_API FaultRegistry& faults();

}  // namespace standin::windows

#endif
