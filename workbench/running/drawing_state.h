/// The state of a drawing at one moment, read from the host: entities as they are listed and as they
/// are drawn. Main thread only.
#ifndef WORKBENCH_DRAWING_STATE_H
#define WORKBENCH_DRAWING_STATE_H

#include "standin/objectarx/drawing.h"
#include "workbench/report/report.h"

#include <cstdint>
#include <string>
#include <vector>

namespace workbench {

/// An entity of model space as it is listed.
struct EntityState {
  std::uint64_t handle = 0;
  std::string type;
  std::string layer;
  standin::Polyline3 points;
};

/// Every entity that is not erased, in the drawing's order.
std::vector<EntityState> listEntities(const standin::Drawing& drawing);

/// The entity as it is drawn, a shape for each layer and colour in it: no colour is "by layer" or "by block".
/// Parts on layers that are off or frozen are left out.
std::vector<ReportShape> shapesOf(const standin::DrawnEntity& entity, const standin::Drawing& drawing);

/// Whether the entity is visible: not erased, on a layer that is neither off nor frozen.
bool isSeen(const standin::DrawnEntity& entity, const standin::Drawing& drawing);

}  // namespace workbench

#endif
