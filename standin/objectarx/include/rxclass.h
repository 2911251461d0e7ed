/// A class known at run time: its name and its parent.
#ifndef STANDIN_RXCLASS_H
#define STANDIN_RXCLASS_H

#include "adesk.h"
#include "rxobject.h"

class STANDIN_OBJECTARX_API AcRxClass : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcRxClass)

  AcRxClass(const ACHAR* name, const AcRxClass* parentP) : mNameP(name), mParentP(parentP) {}

  const ACHAR* name() const { return mNameP; }
  /// True for the class itself and for its ancestors.
  bool isDerivedFrom(const AcRxClass* otherP) const;

 private:
  const ACHAR* mNameP;
  const AcRxClass* mParentP;
};

#endif
