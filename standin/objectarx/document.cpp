#include "document.h"

#include "camera_math.h"

#include <utility>

namespace standin::host {
namespace {

/// Limits of a new drawing.
const AcDbExtents kLimits({0, 0, 0}, {12, 9, 0});

/// The model seen as in the tile, fitted into a viewport of that shape.
Camera viewThrough(const LayoutViewport& window, const Camera& model, const AcDbExtents& box) {
  const PaperView size = window.shown();
  Camera camera = model;
  camera.fieldWidth = model.fieldHeight * size.width / size.height;
  return fitted(camera, box);
}

Camera viewOfSheet(const PaperView& sheet) {
  Camera camera;
  camera.fieldWidth = sheet.width;
  camera.fieldHeight = sheet.height;
  return withShown(camera, sheet);
}

}  // namespace

Document::Document(std::unique_ptr<Drawing> opened) : drawing(std::move(opened)) {
  const AcDbExtents box = extentsToShow();
  const Camera model = drawing->mView ? cameraOf(*drawing->mView) : planView(box);
  tileView.store(model);
  tile.show(shownBy(model));

  const Camera inWindow = viewThrough(floating, model, box);
  floatingView.store(inWindow);
  const PaperView shown = shownBy(inWindow);
  floating.show({shown.centerX, shown.centerY}, shown.height);

  paperView.store(viewOfSheet(sheet()));
}

GraphicsView* Document::viewOf(int viewport) {
  if (isModelTab) return viewport == kTileViewport ? &tileView : nullptr;
  if (viewport == kPaperViewport) return &paperView;
  return viewport == kFloatingViewport ? &floatingView : nullptr;
}

AcDbExtents Document::extentsToShow() const {
  return drawing->extents().value_or(kLimits);
}

std::vector<std::uint64_t> selectableHandles(const Drawing& drawing) {
  std::vector<std::uint64_t> result;
  for (const auto& entityP : drawing.entities()) {
    const EntityProperties& properties = entityP->properties();
    if (!drawing.isErased(properties.handle) && drawing.layer(properties.layer).isVisible)
      result.push_back(properties.handle);
  }
  return result;
}

}  // namespace standin::host
