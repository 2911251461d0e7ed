/// A class known at run time: its name and its parent.
#ifndef STANDIN_RXCLASS_H
#define STANDIN_RXCLASS_H

#include "adesk.h"
#include "rxobject.h"

class STANDIN_OBJECTARX_CLASS AcRxClass : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcRxClass)

  /// What the host knows of the class; it outlives the object.
  struct Body;
  explicit AcRxClass(const Body* bodyP) : mBodyP(bodyP) {}

  const ACHAR* name() const;
  AcRxClass* myParent() const;
  /// True for the class itself and for its ancestors.
  STANDIN_OBJECTARX_MEMBER bool isDerivedFrom(const AcRxClass* otherP) const;

  const Body* body() const { return mBodyP; }

 private:
  const Body* mBodyP;
};

inline bool AcRxObject::isKindOf(const AcRxClass* classP) const {
  return isA()->isDerivedFrom(classP);
}

#endif
