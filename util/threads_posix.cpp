#include "util/threads.h"

#include <windows.h>

std::uint32_t currentThreadId() {
  // Asking the system costs a third of writing a log line, and the id never changes.
  static thread_local std::uint32_t id = 0;
  if (id == 0) id = GetCurrentThreadId();
  return id;
}

bool isProcessEnding() noexcept {
  // exit() runs destructors while the other threads still run, so their locks will be released.
  return false;
}
