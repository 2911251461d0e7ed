#include "bench/objects/null_selection.h"

// clang-format off
#include "acedads.h"
#include "adscodes.h"
#include "dbmain.h"
#include "acdocman.h"
// clang-format on

namespace {

int selected = 0;

class NullEntity final : public AcDbEntity {};

NullEntity& entity() {
  static NullEntity one;
  return one;
}

}  // namespace

void selectNullEntities(int count) {
  selected = count;
}

extern "C" int acedSSGet(const ACHAR*, const void*, const void*, const resbuf*, ads_name) {
  return RTNORM;
}
extern "C" int acedSSLength(const ads_name, AdInt32* length) {
  *length = selected;
  return RTNORM;
}
extern "C" int acedSSName(const ads_name, AdInt32, ads_name) {
  return RTNORM;
}
extern "C" int acedSSFree(const ads_name) {
  return RTNORM;
}
extern "C" int acedRedraw(const ads_name, int) {
  return RTNORM;
}

Acad::ErrorStatus acdbGetObjectId(AcDbObjectId&, const ads_name) {
  return Acad::eOk;
}
Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& entityP, AcDbObjectId, AcDb::OpenMode, bool) {
  entityP = &entity();
  return Acad::eOk;
}
Acad::ErrorStatus AcDbObject::close() {
  return Acad::eOk;
}
Acad::ErrorStatus AcDbEntity::getGeomExtents(AcDbExtents& extents) const {
  extents = AcDbExtents({0, 0, 0}, {1, 1, 1});
  return Acad::eOk;
}
Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d&) {
  return Acad::eOk;
}
