#include "common_sources/paper_view.h"

#include "common_sources/host_objects.h"

// clang-format off
#include "dbents.h"
#include "dbsymtb.h"
#include "aced.h"
#include "gepnt2d.h"
// clang-format on

namespace {

/// Changes the current tile of the model tab through its table record.
template <typename Change>
PaperChange changeTile(Change change) {
  // The table is up to date only after the host has written its own viewports to it.
  acedVports2VportTableRecords();
  Opened<AcDbViewportTableRecord> tile =
      openObject<AcDbViewportTableRecord>(acedActiveViewportId(), AcDb::kForWrite);
  if (!tile) return PaperChange::kNoTile;
  change(*tile);
  // Only a closed record reaches the screen.
  tile.close();
  acedVportTableRecords2Vports();
  return PaperChange::kDone;
}

/// Changes the active viewport of a layout.
template <typename Change>
PaperChange changeViewport(Change change) {
  Opened<AcDbViewport> viewport = openObject<AcDbViewport>(acedActiveViewportId(), AcDb::kForWrite);
  if (!viewport) return PaperChange::kNoViewport;
  change(*viewport);
  viewport->updateDisplay();
  viewport.close();
  return PaperChange::kDone;
}

/// The tab can have changed since the mode of this pass was read, so a tile is possible here too.
bool isModelTab() {
  return systemVariable(L"TILEMODE") == 1;
}

}  // namespace

PaperChange panPaper(double dx, double dy) {
  if (isModelTab())
    return changeTile([=](AcDbViewportTableRecord& tile) {
      // In fractions of the visible size, so that a pan feels the same at every zoom level.
      const AcGePoint2d centre = tile.centerPoint();
      tile.setCenterPoint(AcGePoint2d(centre.x + dx * tile.width(), centre.y + dy * tile.height()));
    });
  return changeViewport([=](AcDbViewport& viewport) {
    // Width and height are the viewport's size on the sheet; what it shows has the same proportions.
    const double height = viewport.viewHeight();
    const double width = viewport.width() / viewport.height() * height;
    const AcGePoint2d centre = viewport.viewCenter();
    viewport.setViewCenter(AcGePoint2d(centre.x + dx * width, centre.y + dy * height));
  });
}

PaperChange zoomPaper(double factor) {
  // The host derives the width from the height.
  if (isModelTab())
    return changeTile([=](AcDbViewportTableRecord& tile) { tile.setHeight(tile.height() * factor); });
  return changeViewport(
      [=](AcDbViewport& viewport) { viewport.setViewHeight(viewport.viewHeight() * factor); });
}

const char* errorText(PaperChange change) {
  return change == PaperChange::kNoTile ? "AcDbViewportTableRecordPointer could not be retrieved!"
                                        : "AcDbObjectPointer could not be retrieved!";
}
