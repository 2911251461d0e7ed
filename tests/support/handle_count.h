/// Handles that the process has open. Windows only.
#ifndef TESTS_SUPPORT_HANDLE_COUNT_H
#define TESTS_SUPPORT_HANDLE_COUNT_H

#include <windows.h>

#include <cstdint>

namespace tests {

/// GetProcessHandleCount returns 0 under Wine, so each number that may be a handle is tried.
inline int handleCount() {
  constexpr std::uintptr_t kStep = 4, kLast = 0x8000;
  int count = 0;
  for (std::uintptr_t number = kStep; number <= kLast; number += kStep) {
    DWORD flags = 0;
    if (GetHandleInformation(reinterpret_cast<HANDLE>(number), &flags)) ++count;
  }
  return count;
}

}  // namespace tests

#endif
