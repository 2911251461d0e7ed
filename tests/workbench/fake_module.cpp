/// A module for tests of the workbench. It moves the view by one unit along x on every tick while the cap is
/// deflected, commits it on release, and sends a text for every command event. The environment variable
/// FAKE_MODULE names what it does wrong.
#include "device/lmt_ctrlr.h"
#include "windows.h"

// clang-format off
#include "rxdefs.h"
#include "accmd.h"
#include "acedads.h"
#include "adscodes.h"
#include "acutads.h"
#include "dbmain.h"
#include "dbents.h"
#include "acdocman.h"
#include "aced.h"
#include "gs.h"
#include "acgs.h"
// clang-format on

#include <dlfcn.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <thread>

namespace {

std::atomic<bool> gIsReading{false};
std::atomic<int> gCapX{0};
std::atomic<int> gEvent{-1};
bool gIsMoving = false;
UINT_PTR gTimer = 0;
std::thread gReader;
AcApDocManagerReactor gReactor;

bool isTold(const char* what) {
  const char* const told = std::getenv("FAKE_MODULE");
  return told != nullptr && std::strcmp(told, what) == 0;
}

void handleEvent(std::int32_t code, std::int16_t x) {
  if (code < 0)
    gCapX = x;
  else
    gEvent = code;
  if (isTold("print-off-main")) acutPrintf(L"from a thread");
}

void readEvents() {
  while (gIsReading) {
    std::int16_t axes[6] = {};
    std::int32_t ignored[2] = {}, code = 0, extras[2] = {};
    if (lmGetEvent(0, &axes[0], &axes[1], &axes[2], &axes[3], &axes[4], &axes[5], &ignored[0], &ignored[1],
                   &code, &extras[0], &extras[1]) == 0)
      handleEvent(code, axes[0]);
  }
}

void move() {
  AcGsView* const view = acgsGetGsView(2, true);
  if (view == nullptr) return;
  const AcGeVector3d step{1, 0, 0};
  // Read once: a release during the drawing belongs to the next tick.
  const bool isDeflected = gCapX != 0;
  if (isDeflected) {
    view->setView(view->position() + step, view->target() + step, view->upVector(), view->fieldWidth(),
                  view->fieldHeight());
    view->update();
  } else if (gIsMoving) {
    acgsSetViewParameters(2, view, true, true);
  }
  gIsMoving = isDeflected;
}

void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD) {
  if (isTold("throw-in-timer")) throw std::runtime_error("no more");
  move();
  const int event = gEvent.exchange(-1);
  if (event < 0) return;
  acutPrintf(L"\nevent %d\n", event);
  acDocManagerPtr()->sendStringToExecute(acDocManagerPtr()->curDocument(), L"'_-VIEW _TOP ", false);
}

void doNothing() {}

void leaveBehind() {
  ads_name set = {};
  AcDbEntity* entity = nullptr;
  if (isTold("leave-lock")) acDocManagerPtr()->lockDocument(acDocManagerPtr()->curDocument());
  if (isTold("leave-reactor")) acDocManagerPtr()->addReactor(&gReactor);
  if (isTold("leave-command")) acedRegCmds->addCommand(L"G", L"FAKE", L"FAKE", 0, doNothing);
  if (isTold("pin")) dlopen(std::getenv("FAKE_MODULE_FILE"), RTLD_NOW | RTLD_NODELETE);
  if (!isTold("leave-set") && !isTold("leave-object")) return;
  acedSSGet(L"I", nullptr, nullptr, nullptr, set);
  if (isTold("leave-set")) return;
  ads_name name = {};
  AcDbObjectId id;
  acedSSName(set, 0, name);
  acdbGetObjectId(id, name);
  acdbOpenAcDbEntity(entity, id, AcDb::kForRead);
  acedSSFree(set);
}

AcRx::AppRetCode init() {
  if (isTold("init-error")) return AcRx::kRetError;
  if (isTold("init-throw")) throw std::runtime_error("not today");
  if (isTold("box")) {
    Beep(440, 200);
    MessageBoxW(nullptr, L"Text \"quoted\"", L"Caption", 0);
  }
  lmConnect(0, "acad");
  gIsReading = true;
  gReader = std::thread(readEvents);
  gTimer = SetTimer(nullptr, 0, 100, tick);
  acutPrintf(L"\nfake\n");
  return AcRx::kRetOK;
}

AcRx::AppRetCode unload() {
  leaveBehind();
  if (!isTold("leave-timer")) KillTimer(nullptr, gTimer);
  if (isTold("leave-thread")) {
    gReader.detach();
    return AcRx::kRetOK;
  }
  gIsReading = false;
  lmDisconnect();
  if (gReader.joinable()) gReader.join();
  return isTold("unload-error") ? AcRx::kRetError : AcRx::kRetOK;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message,
                                                                                  void*) {
  if (message == AcRx::kInitAppMsg) return init();
  if (message == AcRx::kUnloadAppMsg) return unload();
  return AcRx::kRetOK;
}

extern "C" __attribute__((visibility("default"))) std::uint32_t acrxGetApiVersion(std::uint32_t) {
  return FAKE_API_VERSION;
}
