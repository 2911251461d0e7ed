#include "workbench/running/drawing_state.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace workbench {
namespace {

// AutoCAD's colour indices: 0 takes the insertion's colour, 256 the layer's.
constexpr int kByBlock = 0;
constexpr int kByLayer = 256;
constexpr int kWhite = 7;

int resolvedColour(const standin::DrawnPart& part, const standin::Drawing& drawing) {
  if (part.colour == kByLayer) return drawing.layer(part.colourLayer).colour;
  // Outside of any block "by block" is drawn as colour 7. The sign only says that the layer is off.
  return part.colour == kByBlock ? kWhite : std::abs(part.colour);
}

}  // namespace

std::vector<EntityState> listEntities(const standin::Drawing& drawing) {
  std::vector<EntityState> states;
  // Layers do not matter here: entities.csv lists hidden entities as well.
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
    // Parts of a block can be on other layers than the insertion.
    if (!drawing.layer(part.layer).isVisible) continue;
    const int colour = resolvedColour(part, drawing);
    // An entity has a few layers and colours, so a search is cheaper than a map.
    const auto same = std::find_if(shapes.begin(), shapes.end(), [&part, colour](const ReportShape& shape) {
      return shape.layer == part.layer && shape.colour == colour;
    });
    if (same == shapes.end())
      shapes.push_back(
          {entity.properties().handle, part.layer, colour, std::move(part.outline), entity.typeName()});
    else
      std::move(part.outline.begin(), part.outline.end(), std::back_inserter(same->outline));
  }
  return shapes;
}

bool isSeen(const standin::DrawnEntity& entity, const standin::Drawing& drawing) {
  return !drawing.isErased(entity.properties().handle) && drawing.layer(entity.properties().layer).isVisible;
}

}  // namespace workbench
