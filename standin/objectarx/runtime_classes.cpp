// clang-format off
#include "accmd.h"
#include "rxclass.h"
#include "rxdict.h"
#include "rxdlinkr.h"
#include "dbents.h"
#include "dbsymtb.h"
#include "acdocman.h"
#include "gs.h"
// clang-format on

/// Class `NAME` with the parent PARENT.
#define STANDIN_DEFINE_CLASS(NAME, PARENT)                       \
  AcRxClass* NAME::desc() {                                      \
    static AcRxClass description(ACRX_T(#NAME), PARENT::desc()); \
    return &description;                                         \
  }                                                              \
  AcRxClass* NAME::isA() const {                                 \
    return NAME::desc();                                         \
  }

AcRxObject::~AcRxObject() = default;

AcRxClass* AcRxObject::desc() {
  static AcRxClass description(L"AcRxObject", nullptr);
  return &description;
}

AcRxClass* AcRxObject::isA() const {
  return AcRxObject::desc();
}

bool AcRxObject::isKindOf(const AcRxClass* classP) const {
  return isA()->isDerivedFrom(classP);
}

bool AcRxClass::isDerivedFrom(const AcRxClass* otherP) const {
  for (const AcRxClass* classP = this; classP != nullptr; classP = classP->mParentP)
    if (classP == otherP) return true;
  return false;
}

STANDIN_DEFINE_CLASS(AcRxClass, AcRxObject)
STANDIN_DEFINE_CLASS(AcRxDictionary, AcRxObject)
STANDIN_DEFINE_CLASS(AcRxDynamicLinker, AcRxObject)
STANDIN_DEFINE_CLASS(AcEdCommandStack, AcRxObject)
STANDIN_DEFINE_CLASS(AcDbObject, AcRxObject)
STANDIN_DEFINE_CLASS(AcDbEntity, AcDbObject)
STANDIN_DEFINE_CLASS(AcDbLine, AcDbEntity)
STANDIN_DEFINE_CLASS(AcDbViewport, AcDbEntity)
STANDIN_DEFINE_CLASS(AcDbAbstractViewTableRecord, AcDbObject)
STANDIN_DEFINE_CLASS(AcDbViewportTableRecord, AcDbAbstractViewTableRecord)

void AcApDocManagerReactor::documentToBeDestroyed(AcApDocument* /*documentP*/) {}

AcGsView::~AcGsView() = default;
