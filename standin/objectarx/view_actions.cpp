#include "view_actions.h"

#include "state.h"

#include <mutex>

namespace standin::host {
namespace {

/// Limits of a new drawing.
const AcDbExtents kLimits({0, 0, 0}, {12, 9, 0});

void showAllOfSheet() {
  const PaperView sheet = run().mDocumentP->sheet();
  run().mDocumentP->mPaper.show({sheet.centerX, sheet.centerY}, sheet.height);
  run().mPaperView.store(withShown(run().mPaperView.live(), sheet));
}

/// Stores the camera that `change` makes of the current view's, and tells of it.
template <class Change>
void changeCurrentView(const Change& change) {
  std::unique_lock lock(state().mMutex);
  const int viewport = currentViewportNumber();
  GraphicsView& view = *viewOf(viewport);
  view.store(change(view.live()));
  const Camera camera = view.live();
  lock.unlock();
  tell(&Listener::viewChanged, viewport, camera);
}

}  // namespace

AcDbExtents extentsToShow(const Drawing& drawing) {
  return drawing.extents().value_or(kLimits);
}

void zoomToExtents() {
  if (currentDrawing() == nullptr) return;
  changeCurrentView([](const Camera& camera) {
    if (!isOnPaper()) return fitted(camera, extentsToShow(*currentDrawing()));
    showAllOfSheet();
    return run().mPaperView.live();
  });
}

bool lookFrom(const ViewFrame& frame) {
  if (currentDrawing() == nullptr || isOnPaper()) return false;
  changeCurrentView(
      [&frame](const Camera& camera) { return presetView(camera, frame, extentsToShow(*currentDrawing())); });
  return true;
}

VariableChange changeVariable(const std::wstring& name, int value) {
  std::unique_lock lock(state().mMutex);
  const VariableChange change = writeVariable(name, value);
  if (change != VariableChange::kDone) return change;
  const int viewport = currentViewportNumber();
  const Camera camera = viewOf(viewport)->live();
  lock.unlock();
  tell(&Listener::viewChanged, viewport, camera);
  return change;
}

}  // namespace standin::host
