#include "workbench/platform/beeps.h"

#include "workbench/platform/import_table.h"

#include <utility>

namespace workbench {
namespace {

std::function<void(DWORD, DWORD)> theListener;
/// The system's function. `Beep` by name would be this program's import, which may be intercepted too.
decltype(&Beep) systemBeep = nullptr;

// The listener comes first: the system's beep may block for the whole duration.
BOOL WINAPI beep(DWORD hertz, DWORD durationMs) {
  if (theListener) theListener(hertz, durationMs);
  return systemBeep(hertz, durationMs);
}

}  // namespace

void interceptBeeps(HMODULE library) {
  void** const slotP = importSlot(library, "KERNEL32.dll", "Beep");
  DWORD protection = 0;
  // The loader write-protects the import table once it is filled in.
  if (slotP == nullptr || !VirtualProtect(slotP, sizeof *slotP, PAGE_READWRITE, &protection)) return;
  // A second interception of one library must not take this function for the system's: it would call itself.
  if (*slotP != reinterpret_cast<void*>(beep)) systemBeep = reinterpret_cast<decltype(systemBeep)>(*slotP);
  *slotP = reinterpret_cast<void*>(beep);
  VirtualProtect(slotP, sizeof *slotP, protection, &protection);
}

void listenToBeeps(std::function<void(DWORD, DWORD)> listener) {
  theListener = std::move(listener);
}

}  // namespace workbench
