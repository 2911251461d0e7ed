#include "workbench/platform/beeps.h"

#include "workbench/platform/import_table.h"

#include <utility>

namespace workbench {
namespace {

std::function<void(DWORD, DWORD)> theListener;
/// The system's function. `Beep` by name would be this program's import, which may be intercepted too.
decltype(&Beep) systemBeep = nullptr;

BOOL WINAPI beep(DWORD hertz, DWORD durationMs) {
  if (theListener) theListener(hertz, durationMs);
  return systemBeep(hertz, durationMs);
}

}  // namespace

void interceptBeeps(HMODULE library) {
  void** const slotP = importSlot(library, "KERNEL32.dll", "Beep");
  DWORD protection = 0;
  if (slotP == nullptr || !VirtualProtect(slotP, sizeof *slotP, PAGE_READWRITE, &protection)) return;
  if (*slotP != reinterpret_cast<void*>(beep)) systemBeep = reinterpret_cast<decltype(systemBeep)>(*slotP);
  *slotP = reinterpret_cast<void*>(beep);
  VirtualProtect(slotP, sizeof *slotP, protection, &protection);
}

void listenToBeeps(std::function<void(DWORD, DWORD)> listener) {
  theListener = std::move(listener);
}

}  // namespace workbench
