/// Entities of a DXF file, made from their records. Planar entities come from their object frame to the
/// world.
#ifndef WORKBENCH_DXF_ENTITIES_H
#define WORKBENCH_DXF_ENTITIES_H

#include "standin/objectarx/drawing.h"
#include "workbench/dxf/groups.h"

#include <memory>
#include <vector>

namespace workbench {

/// Makes the entity of one record: LINE, POINT, CIRCLE, ARC, ELLIPSE, 3DFACE, LWPOLYLINE. Null for any other
/// type. Throws InputError.
std::unique_ptr<standin::DrawnEntity> makeSimpleEntity(const DxfRecord& record,
                                                       const standin::EntityProperties& properties);

/// Makes the entity of a POLYLINE record and its VERTEX records: 2D with bulges, 3D, polygon mesh, polyface.
/// The frame of a fitted spline is left out, its curve kept. Throws InputError.
std::unique_ptr<standin::DrawnEntity> makePolylineEntity(const DxfRecord& record,
                                                         const std::vector<DxfRecord>& vertices,
                                                         const standin::EntityProperties& properties);

}  // namespace workbench

#endif
