// Stores the module's own handle, which the system passes only here, when it attaches the module to a
// process.
// clang-format off
#include <windows.h>
#include "dbxEntryPoint.h"
// clang-format on

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) _hdllInstance = instance;
  return TRUE;
}
