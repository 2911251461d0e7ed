#include "util/threads.h"

#include <windows.h>

void sleepMs(std::uint32_t ms) {
  Sleep(ms);
}

std::uint32_t currentProcessId() {
  return static_cast<std::uint32_t>(GetCurrentProcessId());
}
