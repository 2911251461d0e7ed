#include "host/auto_cad_app.h"

#include "common_sources/lm_auto_cad.h"
#include "host/toggle_commands.h"

#include "acutads.h"

#include <new>

namespace {

struct Command {
  const ACHAR* name;
  AcRxFunctionPtr function;
};

constexpr const ACHAR* kGroup = ACRX_T("LMGroup");

// A table of our own: AcRxArxApp gathers its rows from sections that the linker sorts, which some compilers
// split, and then no command is registered.
constexpr Command kCommands[] = {
    {ACRX_T("LM_Toggle_Rotation_Center"), &CAutoCAD2011App::LMGroupLM_Toggle_Rotation_Center},
    {ACRX_T("LM_Toggle_Rotation_Axis"), &CAutoCAD2011App::LMGroupLM_Toggle_Rotation_Axis},
    {ACRX_T("LM_Toggle_Scroll_Mode"), &CAutoCAD2011App::LMGroupLM_Toggle_Scroll_Mode},
    {ACRX_T("LM_Toggle_Object_Move_Mode"), &CAutoCAD2011App::LMGroupLM_Toggle_Object_Move_Mode},
};

void addCommands() {
  AcEdCommandStack* const stackP = acedRegCmds;
  if (stackP == nullptr) return;
  for (const Command& command : kCommands)
    stackP->addCommand(kGroup, command.name, command.name, ACRX_CMD_MODAL, command.function, nullptr, -1,
                       _hdllInstance);
}

void removeCommands() {
  AcEdCommandStack* const stackP = acedRegCmds;
  if (stackP == nullptr) return;
  for (const Command& command : kCommands) stackP->removeCmd(kGroup, command.name);
}

/// The host handles no exceptions, so none leaves the module. False when the action has thrown.
template <typename Action>
bool contained(Action action) {
  try {
    action();
    return true;
  } catch (...) {
    return false;
  }
}

}  // namespace

CAutoCAD2011App::CAutoCAD2011App() {
  m_bUnlocked = true;
  m_bMDIAware = true;
}

AcRx::AppRetCode CAutoCAD2011App::On_kInitAppMsg(void* pkt) {
  AcRx::AppRetCode result = AcRx::kRetOK;
  // Each step is guarded alone: when a command cannot be registered, the device still works.
  contained([&] { result = AcRxArxApp::On_kInitAppMsg(pkt); });
  contained(addCommands);
  if (mDocDataP == nullptr) contained([&] { mDocDataP = new (std::nothrow) DocDataManager; });
  if (mLmAutoCadP == nullptr) contained([&] { mLmAutoCadP = new (std::nothrow) LmAutoCad; });
  contained([] { acutPrintf(L"\nmLmAutoCadP constructed\n"); });
  return result;
}

AcRx::AppRetCode CAutoCAD2011App::On_kUnloadAppMsg(void* pkt) {
  AcRx::AppRetCode result = AcRx::kRetOK;
  // A command that stays registered would run code that has been unmapped, so the host is asked twice.
  if (!contained(removeCommands)) contained(removeCommands);
  contained([&] { result = AcRxArxApp::On_kUnloadAppMsg(pkt); });
  delete mLmAutoCadP;
  mLmAutoCadP = nullptr;
  delete mDocDataP;
  mDocDataP = nullptr;
  return result;
}

void CAutoCAD2011App::LMGroupLM_Toggle_Rotation_Center() {
  contained(toggleRotationCenter);
}
void CAutoCAD2011App::LMGroupLM_Toggle_Rotation_Axis() {
  contained(toggleRotationAxis);
}
void CAutoCAD2011App::LMGroupLM_Toggle_Scroll_Mode() {
  contained(toggleScrollMode);
}
void CAutoCAD2011App::LMGroupLM_Toggle_Object_Move_Mode() {
  contained(toggleObjectMoveMode);
}
