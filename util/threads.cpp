#include "util/threads.h"

#include <windows.h>

// Through Windows calls on every build: in a replay the stand-in maps them to its own clock.
void sleepMs(std::uint32_t ms) {
  Sleep(ms);
}

std::uint32_t currentProcessId() {
  return static_cast<std::uint32_t>(GetCurrentProcessId());
}
