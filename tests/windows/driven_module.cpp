#include "tests/windows/driven_module.h"

#include "standin/controller/controller_feed.h"
#include "workbench/platform/import_table.h"

#include "rxdefs.h"

#include <windows.h>

#include <stdexcept>
#include <string>
#include <utility>

namespace {

constexpr LONG kPassMs = 10;

TIMERPROC theTimer = nullptr;
volatile LONG theTicks = 0;
std::function<void()> theEventInAPass;

UINT_PTR WINAPI setTimer(HWND /*window*/, UINT_PTR /*number*/, UINT /*periodMs*/, TIMERPROC procedure) {
  theTimer = procedure;
  return 1;
}

BOOL WINAPI killTimer(HWND /*window*/, UINT_PTR /*number*/) {
  theTimer = nullptr;
  return TRUE;
}

DWORD WINAPI getTickCount() {
  return static_cast<DWORD>(InterlockedExchangeAdd(&theTicks, kPassMs));
}

BOOL WINAPI getCursorPos(POINT* /*pointP*/) {
  if (const auto event = std::exchange(theEventInAPass, {})) event();
  return FALSE;
}

void WINAPI pauseShortly(DWORD /*ms*/) {
  Sleep(1);
}

void replaceImport(const char* library, const std::string& name, const void* functionP) {
  void** const slotP = workbench::importSlot(GetModuleHandleA(LM_MODULE_FILE), library, name);
  DWORD protection = 0;
  if (slotP == nullptr || !VirtualProtect(slotP, sizeof *slotP, PAGE_READWRITE, &protection))
    throw std::runtime_error("the module's import of " + name + " cannot be replaced");
  *slotP = const_cast<void*>(functionP);
  VirtualProtect(slotP, sizeof *slotP, protection, &protection);
}

}  // namespace

DrivenModule::DrivenModule() : mModule(LM_MODULE_FILE) {
  replaceImport("user32.dll", "SetTimer", reinterpret_cast<const void*>(setTimer));
  replaceImport("user32.dll", "KillTimer", reinterpret_cast<const void*>(killTimer));
  replaceImport("user32.dll", "GetCursorPos", reinterpret_cast<const void*>(getCursorPos));
  replaceImport("kernel32.dll", "GetTickCount", reinterpret_cast<const void*>(getTickCount));
  replaceImport("kernel32.dll", "Sleep", reinterpret_cast<const void*>(pauseShortly));
  mModule.send(AcRx::kInitAppMsg);
}

DrivenModule::~DrivenModule() {
  mModule.send(AcRx::kUnloadAppMsg);
}

void DrivenModule::tick() const {
  if (theTimer != nullptr) theTimer(nullptr, WM_TIMER, 1, 0);
}

void DrivenModule::deliver(std::int32_t code, std::array<std::int16_t, 6> axes) const {
  namespace controller = standin::controller;
  const std::uint64_t before = controller::eventsHandedOver();
  controller::deliver({code, axes, 0, 0});
  // When the reading thread fetches an event, it has stored the one before it: this one says nothing.
  constexpr std::int32_t kNoEvent = 0;
  controller::deliver({kNoEvent, {}, 0, 0});
  while (controller::eventsHandedOver() < before + 2) Sleep(0);
}

void DrivenModule::move(std::array<std::int16_t, 6> axes) const {
  constexpr std::int32_t kMotion = -1;
  deliver(kMotion, axes);
  tick();
  deliver(kMotion, {});
  tick();
}

void DrivenModule::move(std::array<std::int16_t, 6> axes, std::function<void()> inFirstPass) const {
  theEventInAPass = std::move(inFirstPass);
  move(axes);
}
