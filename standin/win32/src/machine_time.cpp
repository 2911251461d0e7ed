/// Time as the machine has it: ticks since the process began, timers that are kept but not dispatched.
#include <chrono>
#include <map>
#include <mutex>
#include <thread>

#include "windows.h"

namespace {
std::mutex timersMutex;
std::map<UINT_PTR, TIMERPROC> timers;
UINT_PTR lastTimer = 0;
}  // namespace

UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT, TIMERPROC proc) {
  if (window != nullptr || proc == nullptr) return 0;
  const std::lock_guard lock(timersMutex);
  const UINT_PTR timer = timers.count(id) != 0 ? id : ++lastTimer;
  timers[timer] = proc;
  return timer;
}

BOOL KillTimer(HWND, UINT_PTR id) {
  const std::lock_guard lock(timersMutex);
  return timers.erase(id) != 0 ? TRUE : FALSE;
}

DWORD GetTickCount() {
  using std::chrono::steady_clock;
  static const steady_clock::time_point start = steady_clock::now();
  return static_cast<DWORD>(
      std::chrono::duration_cast<std::chrono::milliseconds>(steady_clock::now() - start).count());
}

void Sleep(DWORD ms) {
  std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}
