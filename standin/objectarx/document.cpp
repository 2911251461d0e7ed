/// An open drawing: its sheet, viewports and views as the host sets them up when it opens a file.
#include "document.h"

#include "camera_math.h"
#include "object_access.h"
#include "object_id.h"

#include <algorithm>
#include <utility>

namespace standin::host {
namespace {

/// Limits of a new drawing: what an empty one shows.
const AcDbExtents kLimits({0, 0, 0}, {12, 9, 0});
/// A sheet of size A3 in millimetres, and the floating viewport in its middle, with the same margin all
/// round.
constexpr PaperView kA3{210, 148.5, 420, 297};
constexpr PaperView kWindow{210, 148.5, 380, 257};
/// Room around the floating viewports of a drawing, on both sides together, as a share of what they cover.
constexpr double kSheetMargin = 1.1;

PaperView placeOf(const Drawing::FloatingViewport& window) {
  return {window.centerX, window.centerY, window.width, window.height};
}

/// A sheet large enough for the floating viewports, because the file does not hold the sheet's own size.
PaperView sheetFor(const std::vector<Drawing::FloatingViewport>& windows) {
  if (windows.empty()) return kA3;
  AcDbExtents box;
  for (const Drawing::FloatingViewport& window : windows) {
    box.addPoint({window.centerX - window.width / 2, window.centerY - window.height / 2, 0});
    box.addPoint({window.centerX + window.width / 2, window.centerY + window.height / 2, 0});
  }
  const AcGeVector3d size = box.maxPoint() - box.minPoint();
  const AcGePoint3d middle = box.minPoint() + size * 0.5;
  return {middle.x, middle.y, size.x * kSheetMargin, size.y * kSheetMargin};
}

/// The model as seen in the tile, fitted into a viewport of that shape.
Camera viewThrough(const PaperView& window, const Camera& model, const AcDbExtents& box) {
  Camera camera = model;
  // The tile's width belongs to the tile's shape, not to that of the window.
  camera.fieldWidth = model.fieldHeight * window.width / window.height;
  return fitted(camera, box);
}

Camera storedView(const Drawing::View& view, const PaperView& window) {
  Camera camera = cameraOf(view);
  // The file's height is what counts: the width follows the viewport's shape.
  camera.fieldWidth = camera.fieldHeight * window.width / window.height;
  return camera;
}

/// The sheet is looked at from above: the default camera's direction.
Camera viewOfSheet(const PaperView& sheet) {
  Camera camera;
  camera.fieldWidth = sheet.width;
  camera.fieldHeight = sheet.height;
  return withShown(camera, sheet);
}

void show(LayoutWindow& window, const Camera& camera) {
  window.view.store(camera);
  const PaperView shown = shownBy(camera);
  window.viewport.show({shown.centerX, shown.centerY}, shown.height);
}

bool isWriteMode(AcAp::DocLockMode mode) {
  return mode == AcAp::kWrite || mode == AcAp::kXWrite || mode == AcAp::kAutoWrite;
}

}  // namespace

Document::Document(std::unique_ptr<Drawing> opened, std::wstring fileName)
    : name(std::move(fileName)),
      drawing(std::move(opened)),
      tile(drawing->serial()),
      sheet(sheetFor(drawing->mFloatingViewports)) {
  // The model's view first: windows without a stored view show the model as the tile does.
  const AcDbExtents box = extentsToShow();
  const Camera model = drawing->mView ? cameraOf(*drawing->mView) : planView(box);
  tileView.store(model);
  tile.show(shownBy(model));

  const auto addWindow = [this](const PaperView& place, const auto& cameraFor) {
    const int number = static_cast<int>(windows.size()) + 1;
    windows.push_back(std::make_unique<LayoutWindow>(drawing->serial(), number, place));
    show(*windows.back(), cameraFor(place));
  };
  // The sheet is number 1, and the floating viewports count on from 2 in the order of the file.
  addWindow(sheet, viewOfSheet);
  for (const Drawing::FloatingViewport& own : drawing->mFloatingViewports)
    addWindow(placeOf(own), [&](const PaperView& place) {
      return own.view ? storedView(*own.view, place) : viewThrough(place, model, box);
    });
  if (drawing->mFloatingViewports.empty())
    addWindow(kWindow, [&](const PaperView& place) { return viewThrough(place, model, box); });
}

LayoutWindow* Document::window(int number) {
  const auto index = static_cast<std::size_t>(number - kPaperViewport);
  return number < kPaperViewport || index >= windows.size() ? nullptr : windows[index].get();
}

GraphicsView* Document::viewOf(int viewport) {
  // Only the viewports of the current tab have a view that can be reached.
  if (isModelTab) return viewport == kTileViewport ? &tileView : nullptr;
  LayoutWindow* const windowP = window(viewport);
  return windowP == nullptr ? nullptr : &windowP->view;
}

void Document::revertViews() {
  tileView.revert();
  for (const auto& windowP : windows) windowP->view.revert();
}

AcDbExtents Document::extentsToShow() const {
  return drawing->extents().value_or(kLimits);
}

bool Document::isWritable() const {
  return std::any_of(locks.begin(), locks.end(), isWriteMode);
}

AcDbObject* Document::object(std::uint64_t number) {
  // The tile's record has the number before those of the layout's viewports, which count from 1.
  if (number == kFirstViewport) return &tile;
  if (number > kFirstViewport) {
    LayoutWindow* const windowP = window(static_cast<int>(number - kFirstViewport));
    return windowP == nullptr ? nullptr : &windowP->viewport;
  }
  DrawnEntity* const entityP = drawing->findByNumber(number);
  return entityP == nullptr ? nullptr : &entityP->entity();
}

std::uint64_t Document::openObjects() const {
  // Counted from the objects themselves, which are about to be destroyed with the document.
  std::uint64_t count = ObjectAccess::openings(tile);
  for (const auto& windowP : windows) count += ObjectAccess::openings(windowP->viewport);
  for (const auto& entityP : drawing->entities()) count += ObjectAccess::openings(entityP->entity());
  return count;
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
