/// The host's system registry. Main thread only.
#ifndef STANDIN_RXDICT_H
#define STANDIN_RXDICT_H

#include "adesk.h"
#include "rxclass.h"
#include "rxobject.h"

class STANDIN_OBJECTARX_API AcRxDictionary : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcRxDictionary)

  /// The object registered under the key, null when there is none.
  virtual AcRxObject* at(const ACHAR* key) const = 0;
};

extern "C" STANDIN_OBJECTARX_API AcRxDictionary* acrxSysRegistry();

#endif
