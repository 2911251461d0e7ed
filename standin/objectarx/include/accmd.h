/// The host's stack of commands that modules have added. Main thread only.
#ifndef STANDIN_ACCMD_H
#define STANDIN_ACCMD_H

#include "acadstrc.h"
#include "rxdict.h"

#include <windows.h>

class AcEdCommand;
class AcEdUIContext;

typedef void (*AcRxFunctionPtr)();

#define ACRX_CMD_MODAL 0

class STANDIN_OBJECTARX_API AcEdCommandStack : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcEdCommandStack)

  /// eDuplicateKey when the group has a command of that global name, eInvalidInput for a null name or
  /// function.
  virtual Acad::ErrorStatus addCommand(const ACHAR* group, const ACHAR* globalName, const ACHAR* localName,
                                       Adesk::Int32 flags, AcRxFunctionPtr function,
                                       AcEdUIContext* contextP = nullptr, int fcode = -1,
                                       HINSTANCE resource = nullptr, AcEdCommand** commandPP = nullptr) = 0;
  /// eKeyNotFound when there is no such command.
  virtual Acad::ErrorStatus removeCmd(const ACHAR* group, const ACHAR* globalName) = 0;
};

#define acedRegCmds AcEdCommandStack::cast(acrxSysRegistry()->at(ACRX_T("ACAD_REGISTERED_COMMANDS")))

#endif
