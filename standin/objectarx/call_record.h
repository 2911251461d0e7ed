/// The arguments with which the host was last called, for those that change nothing in the stand-in but
/// matter to the real host. Main thread only.
#ifndef STANDIN_CALL_RECORD_H
#define STANDIN_CALL_RECORD_H

#include "standin_objectarx_api.h"

#include "acdocman.h"

#include <string>
#include <vector>

namespace standin::host {

struct CallRecord {
  bool createIfNone = false;  ///< acgsGetGsView

  bool regenRequired = false;  ///< acgsSetViewParameters
  bool rescaleRequired = false;
  bool syncRequired = false;

  AcAp::DocLockMode lockMode{};  ///< lockDocument
  bool hasLockNames = false;
  bool isLockPrompted = false;

  bool wrapUpInactiveDoc = false;  ///< sendStringToExecute
  bool echo = false;

  int redrawMode = 0;  ///< acedRedraw

  std::vector<std::wstring> commands;  ///< addCommand: "GROUP GLOBAL LOCAL" of each call
  int commandFlags = -1;               ///< of the last one
  bool hasCommandContext = false;
  int commandResource = 0;
};

/// Kept from one run to the next: look right after the call.
STANDIN_OBJECTARX_API CallRecord& callRecord();

}  // namespace standin::host

#endif
