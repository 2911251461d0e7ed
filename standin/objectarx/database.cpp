// Opening and closing of database objects, and the calls on an open entity.
#include "names.h"
#include "object_access.h"
#include "object_id.h"
#include "operation.h"
#include "state.h"

// clang-format off
#include "dbmain.h"
#include "dbents.h"
// clang-format on

#include <cassert>

using namespace standin;
using namespace standin::host;

namespace {

const Operation kGetObjectId("acdbGetObjectId", Result::kTellsFailure);
const Operation kOpenEntity("acdbOpenAcDbEntity", Result::kTellsFailure);
const Operation kOpenObject("acdbOpenAcDbObject", Result::kTellsFailure);
const Operation kClose("AcDbObject::close", Result::kTellsFailure);
const Operation kExtents("AcDbEntity::getGeomExtents", Result::kTellsFailure);
const Operation kTransform("AcDbEntity::transformBy", Result::kTellsFailure);

/// Null for an id whose document has been closed, too.
AcDbObject* find(AcDbObjectId id) {
  Document* const documentP = documentOf(id.value());
  return documentP == nullptr ? nullptr : documentP->object(numberOf(id.value()));
}

/// The order of the checks decides which status a module sees when several apply.
Acad::ErrorStatus mayOpen(const AcDbObject& object, AcDb::OpenMode mode, bool openErased) {
  const Document* const documentP = documentOf(ObjectAccess::key(object));
  assert(documentP != nullptr && "an object that was found has an open document");
  const Document& document = *documentP;
  const Drawing& drawing = *document.drawing;
  const DrawnEntity* const entityP = drawing.findByNumber(numberOf(ObjectAccess::key(object)));
  if (entityP != nullptr && !openErased && drawing.isErased(entityP->properties().handle))
    return Acad::eWasErased;
  if (mode == AcDb::kForRead) return Acad::eOk;
  if (mode != AcDb::kForWrite) return Acad::eInvalidInput;
  if (!mayWrite(document)) return Acad::eLockViolation;
  // A locked layer forbids writing only: the entity can be read and selected.
  if (entityP != nullptr && drawing.layer(entityP->properties().layer).isLocked) return Acad::eOnLockedLayer;
  return Acad::eOk;
}

Acad::ErrorStatus open(AcDbObject*& objectP, AcDbObjectId id, AcDb::OpenMode mode, const AcRxClass* classP,
                       bool openErased) {
  // Null on every failure, as the host leaves it: a module may look at the pointer alone.
  objectP = nullptr;
  if (id.isNull()) return Acad::eNullObjectId;
  AcDbObject* const foundP = find(id);
  if (foundP == nullptr) return Acad::eUnknownHandle;
  if (!foundP->isKindOf(classP)) return Acad::eNotThatKindOfClass;
  if (const Acad::ErrorStatus status = mayOpen(*foundP, mode, openErased); status != Acad::eOk) return status;
  if (const Acad::ErrorStatus status = ObjectAccess::addOpening(*foundP, mode); status != Acad::eOk)
    return status;
  // Only an opening that succeeded must be closed.
  ++runningCounts().openObjects;
  objectP = foundP;
  return Acad::eOk;
}

}  // namespace

namespace standin::host {

/// Many readers or one writer, as in the host.
Acad::ErrorStatus ObjectAccess::addOpening(AcDbObject& object, AcDb::OpenMode mode) {
  if (object.mIsWriter) return Acad::eWasOpenForWrite;
  if (mode == AcDb::kForWrite && object.mReaders > 0) return Acad::eWasOpenForRead;
  if (mode == AcDb::kForWrite)
    object.mIsWriter = true;
  else
    ++object.mReaders;
  return Acad::eOk;
}

bool ObjectAccess::removeOpening(AcDbObject& object) {
  if (!isOpen(object)) return false;
  if (object.mIsWriter)
    object.mIsWriter = false;
  else
    --object.mReaders;
  return true;
}

}  // namespace standin::host

/// Minimum above maximum: an empty box, which the first point that is added replaces.
AcDbExtents::AcDbExtents() : mMinimum(1e20, 1e20, 1e20), mMaximum(-1e20, -1e20, -1e20) {}

Acad::ErrorStatus AcDbObject::close() {
  const Call call(kClose);
  // The object stays open then, and the report shows it.
  if (call.isToFail()) return Acad::eNotApplicable;
  if (!ObjectAccess::removeOpening(*this)) {
    breach(kClose, "called for an object that is not open");
    return Acad::eNotOpenForRead;
  }
  assert(runningCounts().openObjects > 0 && "every opening of an object is counted");
  --runningCounts().openObjects;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::getGeomExtents(AcDbExtents& extents) const {
  const Call call(kExtents);
  if (call.isToFail()) return Acad::eNullExtents;
  if (!ObjectAccess::isOpen(*this)) {
    breach(kExtents, "called for an object that is not open");
    return Acad::eNotOpenForRead;
  }
  return ObjectAccess::extents(*this, extents);
}

Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d& transform) {
  const Call call(kTransform);
  if (call.isToFail()) return Acad::eNotApplicable;
  if (!ObjectAccess::isOpenForWrite(*this)) {
    breach(kTransform, "called for an object that is not open for write");
    return Acad::eNotOpenForWrite;
  }
  const Document* const documentP = documentOf(ObjectAccess::key(*this));
  assert(documentP != nullptr && "an object that is open has an open document");
  // Checked again: the module may have unlocked the document since it opened the object.
  if (!mayWrite(*documentP)) return Acad::eLockViolation;
  return ObjectAccess::transform(*this, transform);
}

Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name) {
  const Call call(kGetObjectId);
  if (call.isToFail() || !isEntityName(name)) return Acad::eInvalidInput;
  const AcDbObjectId named(idOf(name));
  if (find(named) == nullptr) return Acad::eUnknownHandle;
  id = named;
  return Acad::eOk;
}

Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& entityP, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased) {
  entityP = nullptr;
  const Call call(kOpenEntity);
  if (call.isToFail()) return Acad::eNullObjectPointer;
  AcDbObject* objectP = nullptr;
  const Acad::ErrorStatus status = open(objectP, id, mode, AcDbEntity::desc(), openErased);
  // Safe: open() has checked the class.
  entityP = static_cast<AcDbEntity*>(objectP);
  return status;
}

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& objectP, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased) {
  return acdbOpenAcDbObject(objectP, id, mode, AcDbObject::desc(), openErased);
}

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& objectP, AcDbObjectId id, AcDb::OpenMode mode,
                                     const AcRxClass* classP, bool openErased) {
  objectP = nullptr;
  const Call call(kOpenObject);
  if (call.isToFail()) return Acad::eNullObjectPointer;
  return open(objectP, id, mode, classP, openErased);
}
