/// The Windows functions of time. They run on the clock in force.
#include "operations.h"
#include "standin_ticks.h"
#include "windows.h"

#include <algorithm>

using standin::Result;
using standin::windows::Operation;

namespace {

const Operation kSetTimer("SetTimer", Result::kTellsFailure);
const Operation kKillTimer("KillTimer", Result::kTellsFailure);
const Operation kGetTickCount("GetTickCount", Result::kTellsNothing);

}  // namespace

UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT periodMs, TIMERPROC proc) {
  // Only timers without a window and with a procedure: there is no message loop of a window here.
  if (kSetTimer.hit() || window != nullptr || proc == nullptr) return 0;
  // Windows silently raises a period below 10 ms.
  const UINT period = std::clamp<UINT>(periodMs, USER_TIMER_MINIMUM, USER_TIMER_MAXIMUM);
  return standin::clock::setTimer(
      id, period, [proc](UINT_PTR timer, DWORD ticks) { proc(nullptr, WM_TIMER, timer, ticks); });
}

BOOL KillTimer(HWND window, UINT_PTR id) {
  if (kKillTimer.hit()) return FALSE;
  return window == nullptr && standin::clock::killTimer(id) ? TRUE : FALSE;
}

DWORD GetTickCount() {
  // The function cannot report a failure; an injected fault can only throw.
  kGetTickCount.hit();
  return standin::clock::readTicks();
}

void Sleep(DWORD ms) {
  standin::clock::sleep(ms);
}
