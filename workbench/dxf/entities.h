/// Entities of a DXF file that consist of one record, and POLYLINE with its vertices. Planar entities come
/// from their object frame to the world. Each function throws InputError.
#ifndef WORKBENCH_DXF_ENTITIES_H
#define WORKBENCH_DXF_ENTITIES_H

#include "workbench/dxf/entity.h"

namespace workbench::dxf {

using EntityPtr = std::unique_ptr<standin::DrawnEntity>;

EntityPtr makeLine(const DxfEntity& entity, DxfInserts&);
EntityPtr makePoint(const DxfEntity& entity, DxfInserts&);
EntityPtr makeCircle(const DxfEntity& entity, DxfInserts&);
EntityPtr makeArc(const DxfEntity& entity, DxfInserts&);
EntityPtr makeEllipse(const DxfEntity& entity, DxfInserts&);
EntityPtr makeFace(const DxfEntity& entity, DxfInserts&);
EntityPtr makeLightPolyline(const DxfEntity& entity, DxfInserts&);
/// 2D with bulges, 3D, polygon mesh or polyface. Of a fitted spline the curve is drawn, its frame of control
/// points is not.
EntityPtr makePolyline(const DxfEntity& entity, DxfInserts&);

}  // namespace workbench::dxf

#endif
