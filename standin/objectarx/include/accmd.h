/// The host's stack of commands that modules have added. Main thread only. Needs <windows.h> before it.
#ifndef STANDIN_ACCMD_H
#define STANDIN_ACCMD_H

#include "acadstrc.h"
#include "rxdict.h"

#include <windows.h>

class AcEdCommand;
class AcEdUIContext;

typedef void (*AcRxFunctionPtr)();

#define ACRX_CMD_MODAL 0
#define ACRX_CMD_SESSION 0x200000

class STANDIN_OBJECTARX_CLASS AcEdCommandStack : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcEdCommandStack)

  STANDIN_SLOT(AcEdCommandStack, 7)
  /// Slot 8. eDuplicateKey when the group has a command of that global name, eInvalidInput for a null name or
  /// function.
  virtual Acad::ErrorStatus addCommand(const ACHAR* group, const ACHAR* globalName, const ACHAR* localName,
                                       Adesk::Int32 flags, AcRxFunctionPtr function,
                                       AcEdUIContext* contextP = nullptr, int fcode = -1,
                                       HINSTANCE resource = nullptr, AcEdCommand** commandPP = nullptr) = 0;
  STANDIN_SLOT(AcEdCommandStack, 9)
  STANDIN_SLOTS_5(AcEdCommandStack, 10, 11, 12, 13, 14)
  STANDIN_SLOTS_2(AcEdCommandStack, 15, 16)
  /// Slot 17. eKeyNotFound when there is no such command.
  virtual Acad::ErrorStatus removeCmd(const ACHAR* group, const ACHAR* globalName) = 0;
  STANDIN_SLOT(AcEdCommandStack, 18)
};

#define acedRegCmds AcEdCommandStack::cast(acrxSysRegistry()->at(ACRX_T("ACAD_REGISTERED_COMMANDS")))

#endif
