/// Views as commands change them: stored at once and reported to the listener.
#include "view_actions.h"

#include "listener.h"
#include "operation.h"
#include "state.h"

#include <cassert>
#include <mutex>
#include <utility>

namespace standin::host {
namespace {

Camera showAllOfSheet(Document& document) {
  const PaperView& sheet = document.sheet;
  // The database object and the graphics view hold the sheet's view separately; both must change.
  document.paper().viewport.show({sheet.centerX, sheet.centerY}, sheet.height);
  return withShown(document.paper().view.live(), sheet);
}

using HostLock = std::unique_lock<std::recursive_mutex>;

/// Stores the camera that `change` makes of the current view's, and reports it without the host's lock.
template <class Change>
void changeCurrentView(HostLock lock, const Change& change) {
  assert(currentDocument() != nullptr && "only a document has a view to change");
  const int viewport = currentDocument()->currentViewport();
  GraphicsView& view = currentDocument()->currentView();
  view.store(change(view.live()));
  const Camera camera = view.live();
  lock.unlock();
  notify(&Listener::viewChanged, viewport, camera);
}

}  // namespace

void zoomToExtents() {
  HostLock lock(hostMutex());
  if (currentDocument() == nullptr) return;
  changeCurrentView(std::move(lock), [](const Camera& camera) {
    Document& document = *currentDocument();
    return document.isOnPaper() ? showAllOfSheet(document) : fitted(camera, document.extentsToShow());
  });
}

bool lookFrom(const ViewFrame& frame) {
  HostLock lock(hostMutex());
  if (currentDocument() == nullptr || currentDocument()->isOnPaper()) return false;
  changeCurrentView(std::move(lock), [&frame](const Camera& camera) {
    return presetView(camera, frame, currentDocument()->extentsToShow());
  });
  return true;
}

VariableChange changeVariable(const std::wstring& name, int value) {
  HostLock lock(hostMutex());
  const VariableChange change = writeVariable(name, value);
  // No report of a change that was refused. After TILEMODE or CVPORT the current viewport is another one.
  if (change != VariableChange::kDone) return change;
  assert(currentDocument() != nullptr && "only a document has variables that can change");
  const int viewport = currentDocument()->currentViewport();
  const Camera camera = currentDocument()->currentView().live();
  lock.unlock();
  notify(&Listener::viewChanged, viewport, camera);
  return change;
}

}  // namespace standin::host
