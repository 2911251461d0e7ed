/// The host's system registry. Main thread only.
#ifndef STANDIN_RXDICT_H
#define STANDIN_RXDICT_H

#include "reserved_slots.h"

#include "adesk.h"
#include "rxclass.h"
#include "rxobject.h"

class STANDIN_OBJECTARX_CLASS AcRxDictionary : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcRxDictionary)

  // Microsoft's ABI reverses overloads: the one by number has slot 7, the one by key slot 8.
  /// The object registered under the key, null when there is none.
  virtual AcRxObject* at(const ACHAR* key) const = 0;
  virtual AcRxObject* at(Adesk::UInt32 id) const = 0;
  STANDIN_SLOT(AcRxDictionary, 9)
  STANDIN_SLOTS_10(AcRxDictionary, 1)
  STANDIN_SLOTS_5(AcRxDictionary, 20, 21, 22, 23, 24)
};

extern "C" STANDIN_OBJECTARX_API AcRxDictionary* acrxSysRegistry();

#endif
