/// Run-time class descriptions of the host's classes: isKindOf and the opening of objects use them.
// The order of these headers is the SDK's.
// clang-format off
#include <windows.h>
#include "accmd.h"
#include "rxclass.h"
#include "rxdict.h"
#include "rxdlinkr.h"
// clang-format on

#include "acdocman.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "gs.h"

struct AcRxClass::Body {
  const ACHAR* name;
  AcRxClass* parentP;
};

/// Class `NAME` with the parent PARENT.
#define STANDIN_DEFINE_CLASS(NAME, PARENT)                            \
  AcRxClass* NAME::desc() {                                           \
    static const AcRxClass::Body body{ACRX_T(#NAME), PARENT::desc()}; \
    static AcRxClass description(&body);                              \
    return &description;                                              \
  }                                                                   \
  AcRxClass* NAME::isA() const {                                      \
    return NAME::desc();                                              \
  }

AcRxClass* AcRxObject::desc() {
  static const AcRxClass::Body body{L"AcRxObject", nullptr};
  static AcRxClass description(&body);
  return &description;
}

AcRxClass* AcRxObject::isA() const {
  return AcRxObject::desc();
}

const ACHAR* AcRxClass::name() const {
  return mBodyP->name;
}

AcRxClass* AcRxClass::myParent() const {
  return mBodyP->parentP;
}

bool AcRxClass::isDerivedFrom(const AcRxClass* otherP) const {
  for (const AcRxClass* classP = this; classP != nullptr; classP = classP->myParent())
    if (classP == otherP) return true;
  return false;
}

STANDIN_DEFINE_CLASS(AcRxClass, AcRxObject)
STANDIN_DEFINE_CLASS(AcRxDictionary, AcRxObject)
STANDIN_DEFINE_CLASS(AcRxDynamicLinker, AcRxObject)
STANDIN_DEFINE_CLASS(AcEdCommandStack, AcRxObject)
STANDIN_DEFINE_CLASS(AcApDocManagerReactor, AcRxObject)
STANDIN_DEFINE_CLASS(AcGiDrawable, AcRxObject)
STANDIN_DEFINE_CLASS(AcDbObject, AcGiDrawable)
STANDIN_DEFINE_CLASS(AcDbEntity, AcDbObject)
STANDIN_DEFINE_CLASS(AcDbCurve, AcDbEntity)
STANDIN_DEFINE_CLASS(AcDbLine, AcDbCurve)
STANDIN_DEFINE_CLASS(AcDbViewport, AcDbEntity)
STANDIN_DEFINE_CLASS(AcDbSymbolTableRecord, AcDbObject)
STANDIN_DEFINE_CLASS(AcDbAbstractViewTableRecord, AcDbSymbolTableRecord)
STANDIN_DEFINE_CLASS(AcDbViewportTableRecord, AcDbAbstractViewTableRecord)
