#include "workbench/running/drawing_state.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace workbench {
namespace {

constexpr int kByBlock = 0;
constexpr int kByLayer = 256;
constexpr int kWhite = 7;

int resolvedColour(const standin::DrawnPart& part, const standin::Drawing& drawing) {
  if (part.colour == kByLayer) return drawing.layer(part.colourLayer).colour;
  return part.colour == kByBlock ? kWhite : std::abs(part.colour);
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

std::vector<ReportShape> shapesOf(const standin::DrawnEntity& entity, const standin::Drawing& drawing) {
  std::vector<ReportShape> shapes;
  for (standin::DrawnPart& part : entity.parts()) {
    if (!drawing.layer(part.layer).isVisible) continue;
    const int colour = resolvedColour(part, drawing);
    const auto same = std::find_if(shapes.begin(), shapes.end(), [&part, colour](const ReportShape& shape) {
      return shape.layer == part.layer && shape.colour == colour;
    });
    if (same == shapes.end())
      shapes.push_back({entity.properties().handle, part.layer, colour, std::move(part.outline)});
    else
      std::move(part.outline.begin(), part.outline.end(), std::back_inserter(same->outline));
  }
  return shapes;
}

bool isSeen(const standin::DrawnEntity& entity, const standin::Drawing& drawing) {
  return !drawing.isErased(entity.properties().handle) && drawing.layer(entity.properties().layer).isVisible;
}

}  // namespace workbench
