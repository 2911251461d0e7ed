/// The host's access to what database objects keep private.
#ifndef STANDIN_OBJECT_ACCESS_H
#define STANDIN_OBJECT_ACCESS_H

#include "dbmain.h"

namespace standin {

/// The geometry of an entity, which the SDK's class does not expose.
class EntityGeometry {
 public:
  virtual Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const = 0;
  virtual Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) = 0;

 protected:
  ~EntityGeometry() = default;
};

}  // namespace standin

namespace standin::host {

class ObjectAccess {
 public:
  static void setKey(AcDbObject& object, std::uint64_t key) { object.mId = key; }
  static std::uint64_t key(const AcDbObject& object) { return object.mId; }
  static bool isOpen(const AcDbObject& object) { return openings(object) > 0; }
  static std::uint64_t openings(const AcDbObject& object) {
    return static_cast<std::uint64_t>(object.mReaders) + (object.mIsWriter ? 1 : 0);
  }
  static bool isOpenForWrite(const AcDbObject& object) { return object.mIsWriter; }
  /// eWasOpenForRead or eWasOpenForWrite when the object's openings do not allow another.
  static Acad::ErrorStatus addOpening(AcDbObject& object, AcDb::OpenMode mode);
  /// False when the object was not open.
  static bool removeOpening(AcDbObject& object);

  static Acad::ErrorStatus extents(const AcDbEntity& entity, AcDbExtents& extents) {
    return dynamic_cast<const EntityGeometry&>(entity).subGetGeomExtents(extents);
  }
  static Acad::ErrorStatus transform(AcDbEntity& entity, const AcGeMatrix3d& by) {
    return dynamic_cast<EntityGeometry&>(entity).subTransformBy(by);
  }
};

}  // namespace standin::host

#endif
