/// Database objects and entities, and how they are opened. Main thread only.
#ifndef STANDIN_DBMAIN_H
#define STANDIN_DBMAIN_H

#include "reserved_slots.h"

#include "acadstrc.h"
#include "adsdef.h"
#include "dbid.h"
#include "gemat3d.h"
#include "gepnt3d.h"
#include "rxclass.h"
#include "rxobject.h"

#include <cstdint>

namespace standin::host {
class ObjectAccess;
}

struct AcDb {
  enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };
};

/// A box along the world's axes; without points its minimum is above its maximum.
class AcDbExtents {
 public:
  STANDIN_OBJECTARX_API AcDbExtents();
  AcDbExtents(const AcGePoint3d& minimum, const AcGePoint3d& maximum)
      : mMinimum(minimum), mMaximum(maximum) {}

  AcGePoint3d minPoint() const { return mMinimum; }
  AcGePoint3d maxPoint() const { return mMaximum; }
  void addPoint(const AcGePoint3d& p) {
    mMinimum = {p.x < mMinimum.x ? p.x : mMinimum.x, p.y < mMinimum.y ? p.y : mMinimum.y,
                p.z < mMinimum.z ? p.z : mMinimum.z};
    mMaximum = {p.x > mMaximum.x ? p.x : mMaximum.x, p.y > mMaximum.y ? p.y : mMaximum.y,
                p.z > mMaximum.z ? p.z : mMaximum.z};
  }

 private:
  AcGePoint3d mMinimum;
  AcGePoint3d mMaximum;
};

/// What can be drawn.
class STANDIN_OBJECTARX_CLASS AcGiDrawable : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcGiDrawable)
};

/// Must be open while it is used: for read to ask, for write to change. 24 bytes, as all database classes:
/// what an object holds is in the classes of the host that derive from them.
class STANDIN_OBJECTARX_CLASS AcDbObject : public AcGiDrawable {
 public:
  ACRX_DECLARE_MEMBERS(AcDbObject)

  /// Ends one opening. eNotOpenForRead when the object is not open.
  STANDIN_OBJECTARX_MEMBER Acad::ErrorStatus close();

  STANDIN_SLOTS_3(AcDbObject, 7, 8, 9)
  STANDIN_SLOTS_10(AcDbObject, 1)
  STANDIN_SLOTS_10(AcDbObject, 2)
  STANDIN_SLOTS_10(AcDbObject, 3)
  STANDIN_SLOTS_10(AcDbObject, 4)
  STANDIN_SLOTS_10(AcDbObject, 5)
  STANDIN_SLOTS_10(AcDbObject, 6)
  STANDIN_SLOTS_2(AcDbObject, 70, 71)

 protected:
  AcDbObject() = default;

  friend class standin::host::ObjectAccess;
  std::uint64_t mId = 0;
  int mReaders = 0;
  bool mIsWriter = false;
};

class STANDIN_OBJECTARX_CLASS AcDbEntity : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbEntity)

  STANDIN_SLOTS_5(AcDbEntity, 72, 73, 74, 75, 76)
  STANDIN_SLOTS_3(AcDbEntity, 77, 78, 79)
  STANDIN_SLOTS_10(AcDbEntity, 8)
  STANDIN_SLOTS_5(AcDbEntity, 90, 91, 92, 93, 94)
  STANDIN_SLOTS_2(AcDbEntity, 95, 96)
  /// Slot 97, final, and so called directly. eNullExtents when there is nothing to enclose, eNotOpenForRead
  /// when the entity is not open.
  STANDIN_OBJECTARX_MEMBER virtual Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const final;
  STANDIN_SLOTS_2(AcDbEntity, 98, 99)
  STANDIN_SLOTS_10(AcDbEntity, 10)
  STANDIN_SLOTS_10(AcDbEntity, 11)
  STANDIN_SLOTS_2(AcDbEntity, 120, 121)
  /// Slot 122, final. eNotOpenForWrite when the entity is not open for write.
  STANDIN_OBJECTARX_MEMBER virtual Acad::ErrorStatus transformBy(const AcGeMatrix3d& transform) final;
  STANDIN_SLOTS_3(AcDbEntity, 123, 124, 125)
  STANDIN_SLOTS_4(AcDbEntity, 126, 127, 128, 129)
  STANDIN_SLOTS_10(AcDbEntity, 13)
  STANDIN_SLOTS_10(AcDbEntity, 14)
  STANDIN_SLOTS_10(AcDbEntity, 15)
  STANDIN_SLOTS_10(AcDbEntity, 16)
  STANDIN_SLOTS_3(AcDbEntity, 170, 171, 172)

 protected:
  AcDbEntity() = default;
};

STANDIN_OBJECTARX_API Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name);

/// Readers may be many, a writer is alone: eWasOpenForRead, eWasOpenForWrite. An erased object gives
/// eWasErased unless `openErased`; one on a locked layer eOnLockedLayer for write; a write without the
/// document lock eLockViolation. The pointer is null on failure.
STANDIN_OBJECTARX_API Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& entityP, AcDbObjectId id,
                                                           AcDb::OpenMode mode, bool openErased = false);
STANDIN_OBJECTARX_API Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& objectP, AcDbObjectId id,
                                                           AcDb::OpenMode mode, bool openErased = false);
/// eNotThatKindOfClass for an object of another class.
STANDIN_OBJECTARX_API Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& objectP, AcDbObjectId id,
                                                           AcDb::OpenMode mode, const AcRxClass* classP,
                                                           bool openErased = false);

#endif
