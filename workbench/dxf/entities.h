/// Entities of a DXF file, made from their records. Planar entities come from their object frame to the
/// world.
#ifndef WORKBENCH_DXF_ENTITIES_H
#define WORKBENCH_DXF_ENTITIES_H

#include "standin/objectarx/drawing.h"
#include "workbench/dxf/groups.h"

#include <memory>
#include <string_view>
#include <vector>

namespace workbench {

class DxfInserts;

/// An entity as the file has it.
struct DxfEntity {
  const DxfRecord& record;
  const std::vector<DxfRecord>& vertices;  ///< the VERTEX records of a POLYLINE
  std::string container;                   ///< block that it is in; empty for model space
  standin::EntityProperties properties;
};

/// Makes an entity. Throws InputError.
using DxfEntityMaker = std::unique_ptr<standin::DrawnEntity> (*)(const DxfEntity&, DxfInserts&);

/// Types that the reader understands, and how each is made.
struct DxfEntityType {
  std::string_view name;
  DxfEntityMaker make;
};
const std::vector<DxfEntityType>& dxfEntityTypes();

/// The maker of a type; null for one that the reader does not understand.
DxfEntityMaker dxfEntityMaker(std::string_view type);

/// POLYLINE with its vertices: 2D with bulges, 3D, polygon mesh, polyface. The frame of a fitted spline is
/// left out, its curve kept. Throws InputError.
std::unique_ptr<standin::DrawnEntity> makePolylineEntity(const DxfEntity& entity, DxfInserts& inserts);

}  // namespace workbench

#endif
