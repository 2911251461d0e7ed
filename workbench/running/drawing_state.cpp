#include "workbench/running/drawing_state.h"

#include <cstdlib>

namespace workbench {
namespace {

constexpr int kByBlock = 0;
constexpr int kByLayer = 256;
constexpr int kWhite = 7;

int resolvedColour(const standin::DrawnEntity& entity, const standin::Drawing& drawing) {
  const int colour = entity.properties().colour;
  if (colour == kByLayer) return drawing.layer(entity.properties().layer).colour;
  return colour == kByBlock ? kWhite : std::abs(colour);
}

}  // namespace

std::vector<EntityState> listEntities(const standin::Drawing& drawing) {
  std::vector<EntityState> states;
  for (const auto& entity : drawing.entities()) {
    const standin::EntityProperties& properties = entity->properties();
    if (drawing.isErased(properties.handle)) continue;
    states.push_back({properties.handle, entity->typeName(), properties.layer, entity->points()});
  }
  return states;
}

ReportShape shapeOf(const standin::DrawnEntity& entity, const standin::Drawing& drawing) {
  const standin::EntityProperties& properties = entity.properties();
  return {properties.handle, properties.layer, resolvedColour(entity, drawing), entity.outline()};
}

bool isSeen(const standin::DrawnEntity& entity, const standin::Drawing& drawing) {
  return !drawing.isErased(entity.properties().handle) && drawing.layer(entity.properties().layer).isVisible;
}

}  // namespace workbench
