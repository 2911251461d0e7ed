#include "host_control.h"

#include "operation.h"
#include "state.h"
#include "text.h"
#include "variables.h"
#include "view_actions.h"

#include <algorithm>

namespace standin::host {
namespace {

using Lock = std::unique_lock<std::recursive_mutex>;

/// Cameras of the tile and of the layout's two viewports as the document is opened with.
void makeViews(Document& document) {
  const Drawing& drawing = *document.mDrawingP;
  const AcDbExtents box = extentsToShow(drawing);
  const Camera model = drawing.mView ? cameraOf(*drawing.mView) : planView(box);
  run().mTileView.store(model);
  document.mTile.show(shownBy(model));

  const PaperView floating = document.mFloating.shown();
  Camera inViewport = model;
  inViewport.fieldWidth = model.fieldHeight * floating.width / floating.height;
  inViewport = fitted(inViewport, box);
  run().mFloatingView.store(inViewport);
  const PaperView shown = shownBy(inViewport);
  document.mFloating.show({shown.centerX, shown.centerY}, shown.height);

  Camera paper;
  paper.fieldWidth = document.sheet().width;
  paper.fieldHeight = document.sheet().height;
  run().mPaperView.store(withShown(paper, document.sheet()));
}

void noteWhatClosingLeaves(const Document& document) {
  if (!document.mLocks.empty()) breach("closing the document", "it is still locked");
  if (run().mReport.openObjects != 0) breach("closing the document", "objects of it are still open");
}

}  // namespace

void start(std::function<void()> drawnHook) {
  const Lock lock(state().mMutex);
  state().mRunP = std::make_unique<Run>();
  state().mMainThread = std::this_thread::get_id();
  run().mDrawnP = std::make_shared<const std::function<void()>>(std::move(drawnHook));
  faultRegistry().clear();
}

void setListener(Listener* listenerP) {
  const Lock lock(state().mMutex);
  state().mListenerP = listenerP;
}

void openDocument(std::unique_ptr<Drawing> drawing) {
  closeDocument();
  const Lock lock(state().mMutex);
  run().mDocumentP = std::make_unique<Document>(std::move(drawing));
  run().mIsModelTab = true;
  run().mLayoutViewport = kPaperViewport;
  makeViews(*run().mDocumentP);
}

void closeDocument() {
  Lock lock(state().mMutex);
  if (!run().mDocumentP) return;
  const std::vector<AcApDocManagerReactor*> reactors = run().mReactors;
  AcApDocument* closingP = run().mDocumentP.get();
  lock.unlock();
  for (AcApDocManagerReactor* reactorP : reactors) reactorP->documentToBeDestroyed(closingP);
  lock.lock();
  noteWhatClosingLeaves(*run().mDocumentP);
  run().mDocumentP.reset();
  run().mReport.openObjects = 0;
  run().mSelection.clear();
  run().mQueue.clear();
  run().mCommandLine.clear();
}

Drawing* drawing() {
  return currentDrawing();
}

Report report() {
  const Lock lock(state().mMutex);
  Report result = run().mReport;
  result.selectionSetsAlive = run().mSelectionSets.size();
  result.reactors = run().mReactors.size();
  result.commandsRegistered = run().mCommands.size();
  result.lockDepth = run().mDocumentP ? static_cast<std::int64_t>(run().mDocumentP->mLocks.size()) : 0;
  return result;
}

FaultRegistry& faults() {
  return faultRegistry();
}

bool select(const std::vector<std::uint64_t>& handles) {
  const Lock lock(state().mMutex);
  const Drawing* drawingP = currentDrawing();
  if (drawingP == nullptr) return false;
  const auto isThere = [drawingP](std::uint64_t handle) { return drawingP->find(handle) != nullptr; };
  if (!std::all_of(handles.begin(), handles.end(), isThere)) return false;
  run().mSelection = handles;
  return true;
}

void selectAll() {
  const Lock lock(state().mMutex);
  run().mSelection = selectableHandles();
}

void selectNone() {
  const Lock lock(state().mMutex);
  run().mSelection.clear();
}

std::vector<std::uint64_t> selection() {
  const Lock lock(state().mMutex);
  return run().mSelection;
}

bool setVariable(const std::wstring& name, const std::wstring& value) {
  int number = 0;
  return parseInteger(value, number) && changeVariable(name, number) == VariableChange::kDone;
}

std::optional<std::wstring> variable(const std::wstring& name) {
  const Lock lock(state().mMutex);
  const std::optional<int> value = readVariable(name);
  if (!value) return std::nullopt;
  return std::to_wstring(*value);
}

void type(const std::wstring& text) {
  run().mCommandLine.feed(text + L"\n");
}

bool runQueuedText() {
  Lock lock(state().mMutex);
  if (run().mQueue.empty()) return false;
  const std::wstring text = std::move(run().mQueue.front());
  run().mQueue.pop_front();
  lock.unlock();
  run().mCommandLine.feed(text);
  return true;
}

int currentViewport() {
  const Lock lock(state().mMutex);
  return currentViewportNumber();
}

std::optional<Camera> camera(int viewport) {
  const Lock lock(state().mMutex);
  const GraphicsView* viewP = viewOf(viewport);
  if (viewP == nullptr) return std::nullopt;
  return viewP->live();
}

std::optional<Camera> committedCamera(int viewport) {
  const Lock lock(state().mMutex);
  const GraphicsView* viewP = viewOf(viewport);
  if (viewP == nullptr) return std::nullopt;
  return viewP->committed();
}

bool setCamera(int viewport, const Camera& camera) {
  Lock lock(state().mMutex);
  GraphicsView* viewP = viewOf(viewport);
  if (viewP == nullptr) return false;
  viewP->store(camera);
  lock.unlock();
  tell(&Listener::viewChanged, viewport, camera);
  return true;
}

void setPerspective(bool isPerspective) {
  changeVariable(L"PERSPECTIVE", isPerspective ? 1 : 0);
}

PaperView paperView() {
  const Lock lock(state().mMutex);
  return run().mDocumentP ? run().mDocumentP->mPaper.shown() : PaperView{};
}

Layout layout() {
  const Lock lock(state().mMutex);
  if (!run().mDocumentP) return {};
  // The window lies in the middle of the sheet, with the same margin all round.
  const PaperView sheet = run().mDocumentP->sheet();
  return {sheet, {sheet.centerX, sheet.centerY, kWindowWidth, kWindowHeight}};
}

void setViewValid(bool isValid) {
  const Lock lock(state().mMutex);
  run().mIsViewValid = isValid;
}

}  // namespace standin::host
