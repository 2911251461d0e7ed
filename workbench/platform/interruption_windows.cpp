#include "workbench/platform/interruption.h"

#include <windows.h>

#include <atomic>

namespace workbench {
namespace {

/// Windows ends the process when the handler of a closing console returns: the run gets this time to write.
constexpr DWORD kTimeToWriteMs = 4500;

std::atomic<const char*> theWish{nullptr};

const char* nameOf(DWORD event) {
  switch (event) {
    case CTRL_C_EVENT:
      return "Ctrl-C";
    case CTRL_BREAK_EVENT:
      return "Ctrl-Break";
    case CTRL_CLOSE_EVENT:
      return "the closing of the console";
    default:
      return "the end of the user's session";
  }
}

BOOL WINAPI note(DWORD event) {
  const char* expected = nullptr;
  // The system calls this on a thread of its own. The first request is kept, because the report names it.
  theWish.compare_exchange_strong(expected, nameOf(event));
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) Sleep(kTimeToWriteMs);
  // Handled: the system must not call the next handler, which ends the process.
  return TRUE;
}

}  // namespace

InterruptionGuard::InterruptionGuard() {
  theWish = nullptr;
  SetConsoleCtrlHandler(note, TRUE);
}

InterruptionGuard::~InterruptionGuard() {
  SetConsoleCtrlHandler(note, FALSE);
}

const char* interruption() {
  return theWish;
}

}  // namespace workbench
