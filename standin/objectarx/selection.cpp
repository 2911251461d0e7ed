// Selection sets. Each that is taken must be freed: the host has room for few.
#include "selection.h"

#include "call_record.h"
#include "listener.h"
#include "names.h"
#include "object_access.h"
#include "object_id.h"
#include "operation.h"
#include "state.h"
#include "text.h"

#include "acedads.h"

#include <algorithm>
#include <cassert>
#include <mutex>
#include <string_view>

using namespace standin::host;

namespace {

const Operation kGet("acedSSGet", Result::kTellsFailure);
const Operation kLength("acedSSLength", Result::kTellsFailure);
const Operation kName("acedSSName", Result::kTellsFailure);
const Operation kFree("acedSSFree", Result::kTellsFailure);
const Operation kRedraw("acedRedraw", Result::kTellsFailure);

/// The entities of the set of that name. Null, and a broken rule, when it was never taken or has been freed,
/// or is of a document that is not current: a set's name means nothing to another.
const std::vector<std::uint64_t>* setOf(const Operation& operation, const ads_name ss) {
  if (ss != nullptr && ss[1] == kSelectionSetMark) {
    const auto found = run().selectionSets.find(ss[0]);
    if (found != run().selectionSets.end() && found->second.ownerP == currentDocument())
      return &found->second.ids;
  }
  breach(operation, "called for a selection set that is not alive");
  return nullptr;
}

/// Ids of what is pre-selected; the other modes, which ask the user or search, find nothing here.
std::vector<std::uint64_t> selected(std::wstring_view mode) {
  // The underscore marks the global keyword; both forms are in use.
  if (currentDocument() == nullptr || !(isSameName(mode, L"I") || isSameName(mode, L"_I"))) return {};
  std::vector<std::uint64_t> ids;
  for (const std::uint64_t handle : currentDocument()->selection) {
    standin::DrawnEntity* const entityP = currentDrawing()->find(handle);
    assert(entityP != nullptr && "what is selected is in the drawing");
    ids.push_back(ObjectAccess::key(entityP->entity()));
  }
  return ids;
}

/// Whether this redraw is the first of a run of them, in which a module draws what it has moved at one time.
/// Another begins with another selection set, with the entity that the run began with, or after the host has
/// drawn all.
bool beginsRun(std::uint64_t entity) {
  const bool isFirst = run().firstRedrawn == 0 || run().firstRedrawn == entity;
  if (isFirst) run().firstRedrawn = entity;
  return isFirst;
}

}  // namespace

namespace standin::host {

bool select(const std::vector<std::uint64_t>& handles) {
  const std::lock_guard lock(hostMutex());
  if (currentDocument() == nullptr) return false;
  const Drawing& drawing = *currentDrawing();
  const auto isThere = [&drawing](std::uint64_t handle) { return drawing.find(handle) != nullptr; };
  // All or nothing: half a selection would hide a mistake in a session.
  if (!std::all_of(handles.begin(), handles.end(), isThere)) return false;
  currentDocument()->selection = handles;
  return true;
}

void selectAll() {
  const std::lock_guard lock(hostMutex());
  if (currentDocument() != nullptr) currentDocument()->selection = selectableHandles(*currentDrawing());
}

void selectNone() {
  const std::lock_guard lock(hostMutex());
  if (currentDocument() != nullptr) currentDocument()->selection.clear();
}

std::vector<std::uint64_t> selection() {
  const std::lock_guard lock(hostMutex());
  if (currentDocument() == nullptr) return {};
  return currentDocument()->selection;
}

}  // namespace standin::host

int acedSSGet(const ACHAR* mode, const void* pt1, const void* pt2, const resbuf* filter, ads_name ss) {
  const Call call(kGet);
  if (call.isToFail() || mode == nullptr || ss == nullptr) return RTERROR;
  if (pt1 != nullptr || pt2 != nullptr || filter != nullptr) return RTERROR;
  // A new pass over the selection: its first redraw is one that draws.
  run().firstRedrawn = 0;
  std::vector<std::uint64_t> ids = selected(mode);
  // As the host does: an empty selection is an error, not an empty set.
  if (ids.empty()) return RTERROR;
  // Never used again in a run: a name that was freed must not become good again.
  ss[0] = run().nextSelectionSet++;
  ss[1] = kSelectionSetMark;
  run().selectionSets.emplace(ss[0], SelectionSet{currentDocument(), std::move(ids)});
  return RTNORM;
}

int acedSSLength(const ads_name ss, AdInt32* length) {
  const Call call(kLength);
  if (call.isToFail() || length == nullptr) return RTERROR;
  const auto* idsP = setOf(kLength, ss);
  if (idsP == nullptr) return RTERROR;
  *length = static_cast<AdInt32>(idsP->size());
  return RTNORM;
}

int acedSSName(const ads_name ss, AdInt32 i, ads_name entity) {
  const Call call(kName);
  if (call.isToFail() || entity == nullptr) return RTERROR;
  const auto* idsP = setOf(kName, ss);
  if (idsP == nullptr || i < 0 || static_cast<std::size_t>(i) >= idsP->size()) return RTERROR;
  nameEntity(entity, (*idsP)[static_cast<std::size_t>(i)]);
  return RTNORM;
}

int acedSSFree(const ads_name ss) {
  const Call call(kFree);
  if (call.isToFail() || setOf(kFree, ss) == nullptr) return RTERROR;
  run().selectionSets.erase(ss[0]);
  return RTNORM;
}

int acedRedraw(const ads_name entity, int mode) {
  Call call(kRedraw);
  callRecord().redrawMode = mode;
  if (call.isToFail() || !isEntityName(entity)) return RTERROR;
  const std::uint64_t id = idOf(entity);
  Document* const documentP = documentOf(id);
  // An entity name is good only in the document that is current.
  if (documentP == nullptr || documentP != currentDocument()) return RTERROR;
  if (documentP->object(numberOf(id)) == nullptr) return RTERROR;
  // Only the first of a run takes the time of a frame: the host draws all moved entities in one.
  const bool isDrawing = beginsRun(id);
  call.leave();
  if (isDrawing) drawn();
  return RTNORM;
}
