// What a module does with viewports: reads and writes of their objects, and the moves between tile and table.
#include "camera_math.h"
#include "listener.h"
#include "object_access.h"
#include "operation.h"
#include "state.h"

#include "aced.h"

#include <cassert>
#include <cmath>

using namespace standin::host;

namespace {

const Operation kWidth("AcDbViewport::width", Result::kTellsNothing);
const Operation kHeight("AcDbViewport::height", Result::kTellsNothing);
const Operation kViewHeight("AcDbViewport::viewHeight", Result::kTellsNothing);
const Operation kSetViewHeight("AcDbViewport::setViewHeight", Result::kTellsFailure);
const Operation kViewCenter("AcDbViewport::viewCenter", Result::kTellsNothing);
const Operation kSetViewCenter("AcDbViewport::setViewCenter", Result::kTellsFailure);
const Operation kUpdateDisplay("AcDbViewport::updateDisplay", Result::kTellsFailure);
const Operation kCenterPoint("AcDbAbstractViewTableRecord::centerPoint", Result::kTellsNothing);
const Operation kSetCenterPoint("AcDbAbstractViewTableRecord::setCenterPoint", Result::kTellsNothing);
const Operation kRecordWidth("AcDbAbstractViewTableRecord::width", Result::kTellsNothing);
const Operation kRecordHeight("AcDbAbstractViewTableRecord::height", Result::kTellsNothing);
const Operation kSetHeight("AcDbAbstractViewTableRecord::setHeight", Result::kTellsNothing);
const Operation kActiveViewport("acedActiveViewportId", Result::kTellsFailure);
const Operation kToRecords("acedVports2VportTableRecords", Result::kTellsFailure);
const Operation kToTiles("acedVportTableRecords2Vports", Result::kTellsFailure);

/// The value, even of an object that is not open: the host returns it too, so the breach is all that shows
/// it.
template <class T>
T readFrom(const Operation& operation, const AcDbObject& object, const T& value) {
  const Call call(operation);
  if (!ObjectAccess::isOpen(object)) breach(operation, "called for an object that is not open");
  return value;
}

/// Whether the object may be written now; a write to one that is not open for write breaks a rule.
Acad::ErrorStatus mayChange(const Operation& operation, const AcDbObject& object) {
  if (!ObjectAccess::isOpenForWrite(object)) {
    breach(operation, "called for an object that is not open for write");
    return Acad::eNotOpenForWrite;
  }
  return mayWrite(*documentOf(ObjectAccess::key(object))) ? Acad::eOk : Acad::eLockViolation;
}

// Safe: the host makes every object of these classes itself.
LayoutViewport& own(AcDbViewport& viewport) {
  return static_cast<LayoutViewport&>(viewport);
}
const LayoutViewport& own(const AcDbViewport& viewport) {
  return static_cast<const LayoutViewport&>(viewport);
}
TileRecord& own(AcDbAbstractViewTableRecord& record) {
  return static_cast<TileRecord&>(record);
}
const TileRecord& own(const AcDbAbstractViewTableRecord& record) {
  return static_cast<const TileRecord&>(record);
}

bool isLength(double value) {
  return std::isfinite(value) && value > 0;
}

bool isPoint(const AcGePoint2d& point) {
  return std::isfinite(point.x) && std::isfinite(point.y);
}

}  // namespace

double AcDbViewport::width() const {
  return readFrom(kWidth, *this, own(*this).mWidth);
}
double AcDbViewport::height() const {
  return readFrom(kHeight, *this, own(*this).mHeight);
}
double AcDbViewport::viewHeight() const {
  return readFrom(kViewHeight, *this, own(*this).mViewHeight);
}
AcGePoint2d AcDbViewport::viewCenter() const {
  return readFrom(kViewCenter, *this, own(*this).mViewCentre);
}

Acad::ErrorStatus AcDbViewport::setViewHeight(double height) {
  const Call call(kSetViewHeight);
  if (call.isToFail() || !isLength(height)) return Acad::eInvalidInput;
  const Acad::ErrorStatus status = mayChange(kSetViewHeight, *this);
  if (status == Acad::eOk) own(*this).mViewHeight = height;
  return status;
}

Acad::ErrorStatus AcDbViewport::setViewCenter(const AcGePoint2d& centre) {
  const Call call(kSetViewCenter);
  if (call.isToFail() || !isPoint(centre)) return Acad::eInvalidInput;
  const Acad::ErrorStatus status = mayChange(kSetViewCenter, *this);
  if (status == Acad::eOk) own(*this).mViewCentre = centre;
  return status;
}

Acad::ErrorStatus AcDbViewport::updateDisplay() const {
  Call call(kUpdateDisplay);
  if (call.isToFail()) return Acad::eNotApplicable;
  if (!ObjectAccess::isOpen(*this)) breach(kUpdateDisplay, "called for an object that is not open");
  const PaperView shown = own(*this).shown();
  const int number = own(*this).mNumber;
  Document* const documentP = documentOf(ObjectAccess::key(*this));
  assert(documentP != nullptr && documentP->window(number) != nullptr && "a viewport has a window");
  // The database object holds centre and height only; the camera's direction stays.
  GraphicsView& view = documentP->window(number)->view;
  view.store(withShown(view.live(), shown));
  ++runningCounts().paperUpdates;
  run().firstRedrawn = 0;
  call.leave();
  notify(&Listener::paperChanged, number, shown);
  drawn();
  return Acad::eOk;
}

AcGePoint2d AcDbAbstractViewTableRecord::centerPoint() const {
  return readFrom(kCenterPoint, *this, own(*this).mCentre);
}
double AcDbAbstractViewTableRecord::width() const {
  return readFrom(kRecordWidth, *this, own(*this).mWidth);
}
double AcDbAbstractViewTableRecord::height() const {
  return readFrom(kRecordHeight, *this, own(*this).mHeight);
}

void AcDbAbstractViewTableRecord::setCenterPoint(const AcGePoint2d& centre) {
  const Call call(kSetCenterPoint);
  if (!isPoint(centre)) return breach(kSetCenterPoint, "called with a centre that is not finite");
  if (mayChange(kSetCenterPoint, *this) == Acad::eOk) own(*this).mCentre = centre;
}

void AcDbAbstractViewTableRecord::setHeight(double height) {
  const Call call(kSetHeight);
  if (!isLength(height)) return breach(kSetHeight, "called with a height that is not above 0");
  if (mayChange(kSetHeight, *this) == Acad::eOk) own(*this).mHeight = height;
}

AcDbObjectId acedActiveViewportId() {
  const Call call(kActiveViewport);
  if (call.isToFail() || currentDocument() == nullptr) return {};
  Document& document = *currentDocument();
  if (document.isModelTab) return AcDbObjectId(ObjectAccess::key(document.tile));
  LayoutWindow* const windowP = document.window(document.layoutViewport);
  assert(windowP != nullptr && "the current viewport has a window");
  return AcDbObjectId(ObjectAccess::key(windowP->viewport));
}

Acad::ErrorStatus acedVports2VportTableRecords() {
  const Call call(kToRecords);
  if (call.isToFail() || currentDocument() == nullptr) return Acad::eNotApplicable;
  // The live view, not the stored one: a module pans on from what is on the screen.
  currentDocument()->tile.show(shownBy(currentDocument()->tileView.live()));
  return Acad::eOk;
}

Acad::ErrorStatus acedVportTableRecords2Vports() {
  Call call(kToTiles);
  if (call.isToFail() || currentDocument() == nullptr) return Acad::eNotApplicable;
  TileRecord& record = currentDocument()->tile;
  // The host reads the record here and would find it half written.
  if (ObjectAccess::isOpen(record)) breach(kToTiles, "called while the table record is open");
  GraphicsView& view = currentDocument()->tileView;
  view.store(withShown(view.live(), record.shown()));
  // A module does not set the width: it follows the height in the tile's proportion. The record takes it
  // back.
  const PaperView shown = shownBy(view.live());
  record.show(shown);
  ++runningCounts().paperUpdates;
  run().firstRedrawn = 0;
  call.leave();
  notify(&Listener::paperChanged, kTileViewport, shown);
  drawn();
  return Acad::eOk;
}
