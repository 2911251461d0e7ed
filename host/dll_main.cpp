// The module learns its own handle when the system attaches it to a process; nothing else tells it.
// clang-format off
#include <windows.h>
#include "dbxEntryPoint.h"
// clang-format on

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) _hdllInstance = instance;
  return TRUE;
}
