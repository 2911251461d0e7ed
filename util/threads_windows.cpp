#include "util/threads.h"

#include <windows.h>

std::uint32_t currentThreadId() {
  return static_cast<std::uint32_t>(GetCurrentThreadId());
}

bool isProcessEnding() noexcept {
  // Looked up at run time: the libraries that programs are usually linked with do not have it.
  using Query = BOOLEAN(NTAPI*)();
  const HMODULE system = GetModuleHandleW(L"ntdll.dll");
  const FARPROC address = system != nullptr ? GetProcAddress(system, "RtlDllShutdownInProgress") : nullptr;
  return address != nullptr && reinterpret_cast<Query>(reinterpret_cast<void*>(address))() != 0;
}
