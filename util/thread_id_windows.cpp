#include <windows.h>

#include "util/threads.h"

std::uint32_t currentThreadId() {
  return static_cast<std::uint32_t>(GetCurrentThreadId());
}
