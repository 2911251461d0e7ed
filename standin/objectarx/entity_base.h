/// An entity with geometry: the database entity and the drawn one in one object.
#ifndef STANDIN_ENTITY_BASE_H
#define STANDIN_ENTITY_BASE_H

#include "drawing.h"
#include "object_access.h"

namespace standin {

class GeometryEntity : public AcDbEntity, public DrawnEntity, public EntityGeometry {
 public:
  explicit GeometryEntity(EntityProperties properties) : DrawnEntity(std::move(properties)) {}
  AcDbEntity& entity() override { return *this; }
};

/// Box of points; eNullExtents, with the box untouched, when there are none.
Acad::ErrorStatus boxOf(const std::vector<Polyline3>& wires, AcDbExtents& extents);

}  // namespace standin

#endif
