/// The host's loader of modules. Main thread only.
#ifndef STANDIN_RXDLINKR_H
#define STANDIN_RXDLINKR_H

#include "rxdict.h"

class STANDIN_OBJECTARX_API AcRxDynamicLinker : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcRxDynamicLinker)

  /// `appId` is the packet of the init message. False when the host does not know it.
  virtual bool unlockApplication(void* appId) const = 0;
  virtual bool registerAppMDIAware(void* appId) const = 0;
};

#define ACRX_DYNAMIC_LINKER ACRX_T("DynamicLinker")
#define acrxDynamicLinker AcRxDynamicLinker::cast(acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER))

#endif
