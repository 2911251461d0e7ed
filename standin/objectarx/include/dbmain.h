/// Database objects and entities, and how they are opened. Main thread only.
#ifndef STANDIN_DBMAIN_H
#define STANDIN_DBMAIN_H

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

/// A box along the world's axes; without points its minimum lies above its maximum.
class AcDbExtents {
 public:
  AcDbExtents() = default;
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
  AcGePoint3d mMinimum{1e20, 1e20, 1e20};
  AcGePoint3d mMaximum{-1e20, -1e20, -1e20};
};

/// Must be open while it is used: for read to ask, for write to change.
class STANDIN_OBJECTARX_API AcDbObject : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbObject)

  /// Ends one opening. eNotOpenForRead when the object is not open.
  Acad::ErrorStatus close();

 protected:
  AcDbObject() = default;

 private:
  friend class standin::host::ObjectAccess;
  std::uint64_t mId = 0;
  int mReaders = 0;
  bool mIsWriter = false;
};

class STANDIN_OBJECTARX_API AcDbEntity : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbEntity)

  /// eNullExtents when there is nothing to enclose, eNotOpenForRead when the entity is not open.
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const;
  /// eNotOpenForWrite when the entity is not open for write.
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& transform);

 protected:
  virtual Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const = 0;
  virtual Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) = 0;

 private:
  friend class standin::host::ObjectAccess;
};

STANDIN_OBJECTARX_API Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name);

/// Readers may be many, a writer is alone: eWasOpenForRead, eWasOpenForWrite. An erased object answers
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
