// What a module does with graphics views.
#include "call_record.h"
#include "graphics_view.h"
#include "listener.h"
#include "operation.h"
#include "state.h"

// clang-format off
#include "dbmain.h"
#include "acgs.h"
// clang-format on

#include <cmath>

namespace standin::host {
namespace {

const Operation kPosition("AcGsView::position", Result::kTellsNothing);
const Operation kTarget("AcGsView::target", Result::kTellsNothing);
const Operation kUpVector("AcGsView::upVector", Result::kTellsNothing);
const Operation kIsPerspective("AcGsView::isPerspective", Result::kTellsNothing);
const Operation kFieldWidth("AcGsView::fieldWidth", Result::kTellsNothing);
const Operation kFieldHeight("AcGsView::fieldHeight", Result::kTellsNothing);
const Operation kSetView("AcGsView::setView", Result::kTellsNothing);
const Operation kZoom("AcGsView::zoom", Result::kTellsNothing);
const Operation kIsValid("AcGsView::isValid", Result::kTellsFailure);
const Operation kUpdate("AcGsView::update", Result::kTellsNothing);
const Operation kGetGsView("acgsGetGsView", Result::kTellsFailure);
const Operation kSetViewParameters("acgsSetViewParameters", Result::kTellsFailure);

bool isUsable(double length) {
  return std::isfinite(length) && length > 0;
}

bool isFinite(const AcGeVector3d& v) {
  return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

bool isUsable(const Camera& camera) {
  const AcGeVector3d sight = camera.position - camera.target;
  // 0 when the camera is at its target, or looks along its up direction: such a view has no frame.
  const AcGeVector3d side = sight.crossProduct(camera.up);
  return isFinite(camera.position - AcGePoint3d::kOrigin) && isFinite(camera.target - AcGePoint3d::kOrigin) &&
         isFinite(side) && side.dotProduct(side) > 0 && isUsable(camera.fieldWidth) &&
         isUsable(camera.fieldHeight);
}

}  // namespace

AcGePoint3d GraphicsView::position() const {
  const Call call(kPosition);
  return mLive.position;
}

AcGePoint3d GraphicsView::target() const {
  const Call call(kTarget);
  return mLive.target;
}

AcGeVector3d GraphicsView::upVector() const {
  const Call call(kUpVector);
  return mLive.up;
}

bool GraphicsView::isPerspective() const {
  const Call call(kIsPerspective);
  return mLive.isPerspective;
}

double GraphicsView::fieldWidth() const {
  const Call call(kFieldWidth);
  return mLive.fieldWidth;
}

double GraphicsView::fieldHeight() const {
  const Call call(kFieldHeight);
  return mLive.fieldHeight;
}

void GraphicsView::setView(const AcGePoint3d& position, const AcGePoint3d& target, const AcGeVector3d& up,
                           double fieldWidth, double fieldHeight, Projection projection) {
  const Call call(kSetView);
  const Camera camera{position, target, up, fieldWidth, fieldHeight, projection == kPerspective};
  if (!isUsable(camera)) return breach(kSetView, "called with a view that shows nothing");
  mLive = camera;
}

void GraphicsView::zoom(double factor) {
  const Call call(kZoom);
  // A factor above 1 enlarges the picture, so the field gets smaller.
  const double width = mLive.fieldWidth / factor;
  const double height = mLive.fieldHeight / factor;
  // Also refuses a factor that is negative, 0 or not a number.
  if (!isUsable(width) || !isUsable(height))
    return breach(kZoom, "called with a factor that leaves no field");
  mLive.fieldWidth = width;
  mLive.fieldHeight = height;
}

bool GraphicsView::isValid() const {
  const Call call(kIsValid);
  // A view of the tab that was left still exists, but is not one to draw in.
  return !call.isToFail() && run().isViewValid && viewOf(mNumber) == this;
}

void GraphicsView::update() {
  Call call(kUpdate);
  ++runningCounts().updates;
  // All is drawn, so the next redraw of an entity begins a new run.
  run().firstRedrawn = 0;
  // A copy for the listener: it is called without the host's lock.
  const Camera camera = mLive;
  call.leave();
  notify(&Listener::viewUpdated, mNumber, camera);
  drawn();
}

}  // namespace standin::host

using namespace standin::host;

AcGsView* acgsGetGsView(int viewportNumber, bool createIfNone) {
  const Call call(kGetGsView);
  callRecord().createIfNone = createIfNone;
  return call.isToFail() ? nullptr : viewOf(viewportNumber);
}

Adesk::Boolean acgsSetViewParameters(int viewportNumber, const AcGsView* viewP, bool regenRequired,
                                     bool rescaleRequired, bool syncRequired) {
  Call call(kSetViewParameters);
  CallRecord& record = callRecord();
  record.regenRequired = regenRequired;
  record.rescaleRequired = rescaleRequired;
  record.syncRequired = syncRequired;
  if (call.isToFail()) return Adesk::kFalse;
  GraphicsView* ownP = viewOf(viewportNumber);
  const auto* givenP = dynamic_cast<const GraphicsView*>(viewP);
  if (ownP == nullptr || givenP == nullptr) return Adesk::kFalse;
  if (!run().isViewValid) {
    breach(kSetViewParameters, "called with a view that is not valid");
    return Adesk::kFalse;
  }
  const Camera camera = givenP->live();
  // The live camera of the given view becomes both what is shown and what is stored. Nothing is drawn: a
  // module updates the view itself.
  ownP->store(camera);
  ++runningCounts().commits;
  call.leave();
  notify(&Listener::viewCommitted, viewportNumber, camera);
  return Adesk::kTrue;
}
