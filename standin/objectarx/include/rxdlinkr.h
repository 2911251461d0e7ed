/// The host's loader of modules. Main thread only.
#ifndef STANDIN_RXDLINKR_H
#define STANDIN_RXDLINKR_H

#include "rxdict.h"

class STANDIN_OBJECTARX_CLASS AcRxDynamicLinker : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcRxDynamicLinker)

  STANDIN_SLOTS_3(AcRxDynamicLinker, 7, 8, 9)
  STANDIN_SLOTS_5(AcRxDynamicLinker, 10, 11, 12, 13, 14)
  STANDIN_SLOTS_4(AcRxDynamicLinker, 15, 16, 17, 18)
  /// Slot 19. `appId` is the packet of the init message. False when the host does not know it.
  virtual bool unlockApplication(void* appId) const = 0;
  STANDIN_SLOT(AcRxDynamicLinker, 20)
  /// Slot 21.
  virtual bool registerAppMDIAware(void* appId) const = 0;
  STANDIN_SLOTS_4(AcRxDynamicLinker, 22, 23, 24, 25)
};

#define ACRX_DYNAMIC_LINKER ACRX_T("DynamicLinker")
#define acrxDynamicLinker AcRxDynamicLinker::cast(acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER))

#endif
