// What Windows' loader does with a library: compiled into a native module that has a DllMain. An address
// inside the module serves as its handle.
#include "windows.h"

extern "C" __attribute__((visibility("hidden"))) BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason,
                                                                     LPVOID reserved);

namespace {

char theHandle;

__attribute__((constructor)) void attach() {
  DllMain(reinterpret_cast<HINSTANCE>(&theHandle), DLL_PROCESS_ATTACH, nullptr);
}

__attribute__((destructor)) void detach() {
  DllMain(reinterpret_cast<HINSTANCE>(&theHandle), DLL_PROCESS_DETACH, nullptr);
}

}  // namespace
