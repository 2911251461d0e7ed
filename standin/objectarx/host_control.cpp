/// The calls with which tests and the workbench act as the user and look at the host.
#include "host_control.h"

#include "command_line.h"
#include "object_access.h"
#include "operation.h"
#include "state.h"
#include "text.h"
#include "variables.h"
#include "view_actions.h"

#include <mutex>
#include <utility>

namespace standin::host {
namespace {

using Lock = std::unique_lock<std::recursive_mutex>;

/// Text may be typed while no document is open: a module's commands run then, too.
CommandLine& currentCommandLine() {
  const Lock lock(hostMutex());
  return currentDocument() != nullptr ? currentDocument()->commandLine : run().commandLine;
}

/// The text for the current document that has waited longest; none when none waits.
std::optional<std::wstring> takeQueuedText() {
  const Lock lock(hostMutex());
  if (currentDocument() == nullptr || currentDocument()->queue.empty()) return std::nullopt;
  std::wstring text = std::move(currentDocument()->queue.front().text);
  currentDocument()->queue.pop_front();
  return text;
}

/// Name of a document that a text waits in which makes it current; none when there is none.
std::optional<std::wstring> documentToActivate() {
  const Lock lock(hostMutex());
  for (const auto& documentP : run().documents)
    if (!documentP->queue.empty() && documentP->queue.front().isActivating) return documentP->name;
  return std::nullopt;
}

}  // namespace

void start(std::function<void()> drawnHook) {
  const Lock lock(hostMutex());
  beginRun();
  // After the run: the end of the old documents is not counted in the new run.
  beginCounting();
  setDrawnHook(std::move(drawnHook));
}

Counts counts() {
  const Lock lock(hostMutex());
  Counts result = runningCounts();
  // What is alive now is counted here, what has happened was counted as it happened.
  result.selectionSetsAlive = run().selectionSets.size();
  result.reactors = run().reactors.size();
  result.commandsRegistered = run().commands.size();
  for (const auto& documentP : run().documents)
    result.lockDepth += static_cast<std::int64_t>(documentP->locks.size());
  return result;
}

FaultRegistry& faults() {
  return faultRegistry();
}

bool setVariable(const std::wstring& name, const std::wstring& value) {
  int number = 0;
  return parseInteger(value, number) && changeVariable(name, number) == VariableChange::kDone;
}

std::optional<std::wstring> variable(const std::wstring& name) {
  const Lock lock(hostMutex());
  const std::optional<int> value = readVariable(name);
  if (!value) return std::nullopt;
  return std::to_wstring(*value);
}

void type(const std::wstring& text) {
  // Enter ends the input.
  feed(currentCommandLine(), text + L"\n");
}

bool runQueuedText() {
  std::optional<std::wstring> text = takeQueuedText();
  // Only when nothing waits for the current document: its own text comes before a switch.
  if (!text) {
    if (const std::optional<std::wstring> name = documentToActivate()) switchDocument(*name);
    text = takeQueuedText();
  }
  // As it was sent, without an Enter of the host's: a text that does not end with one waits.
  if (text) feed(currentCommandLine(), *text);
  return text.has_value();
}

std::uint64_t objectIdOf(std::uint64_t handle) {
  const Lock lock(hostMutex());
  DrawnEntity* const entityP = currentDrawing() != nullptr ? currentDrawing()->find(handle) : nullptr;
  return entityP == nullptr ? 0 : ObjectAccess::key(entityP->entity());
}

int currentViewport() {
  const Lock lock(hostMutex());
  return currentDocument() != nullptr ? currentDocument()->currentViewport() : kTileViewport;
}

std::optional<Camera> camera(int viewport) {
  const Lock lock(hostMutex());
  const GraphicsView* viewP = viewOf(viewport);
  if (viewP == nullptr) return std::nullopt;
  return viewP->live();
}

std::optional<Camera> committedCamera(int viewport) {
  const Lock lock(hostMutex());
  const GraphicsView* viewP = viewOf(viewport);
  if (viewP == nullptr) return std::nullopt;
  return viewP->committed();
}

bool setCamera(int viewport, const Camera& camera) {
  Lock lock(hostMutex());
  GraphicsView* viewP = viewOf(viewport);
  if (viewP == nullptr) return false;
  viewP->store(camera);
  // The listener may wait for another thread, which may need the host.
  lock.unlock();
  notify(&Listener::viewChanged, viewport, camera);
  return true;
}

void setPerspective(bool isPerspective) {
  changeVariable(L"PERSPECTIVE", isPerspective ? 1 : 0);
}

PaperView paperView() {
  const Lock lock(hostMutex());
  return currentDocument() != nullptr ? currentDocument()->paper().viewport.shown() : PaperView{};
}

Layout layout() {
  const Lock lock(hostMutex());
  if (currentDocument() == nullptr) return {};
  Layout layout{currentDocument()->sheet, {}};
  for (const auto& windowP : currentDocument()->windows)
    if (windowP.get() != &currentDocument()->paper()) layout.windows.push_back(windowP->place);
  return layout;
}

void setViewValid(bool isValid) {
  const Lock lock(hostMutex());
  run().isViewValid = isValid;
}

}  // namespace standin::host
