// Selection sets. Each that is taken must be freed: the host has room for few.
#include "selection.h"

#include "call_record.h"
#include "names.h"
#include "operation.h"
#include "state.h"
#include "text.h"

#include "acedads.h"

#include <algorithm>
#include <mutex>
#include <string_view>

using namespace standin::host;

namespace {

const Operation kGet("acedSSGet", Result::kTellsFailure);
const Operation kLength("acedSSLength", Result::kTellsFailure);
const Operation kName("acedSSName", Result::kTellsFailure);
const Operation kFree("acedSSFree", Result::kTellsFailure);
const Operation kRedraw("acedRedraw", Result::kTellsFailure);

/// The set of that name; null, and a broken rule, when it was never taken or has been freed.
const std::vector<std::uint64_t>* setOf(const Operation& operation, const ads_name ss) {
  if (ss != nullptr && ss[1] == kSelectionSetMark) {
    const auto found = run().selectionSets.find(ss[0]);
    if (found != run().selectionSets.end()) return &found->second;
  }
  breach(operation, "called for a selection set that is not alive");
  return nullptr;
}

std::vector<std::uint64_t> selected(std::wstring_view mode) {
  if (currentDocument() == nullptr) return {};
  if (isSameName(mode, L"I") || isSameName(mode, L"_I")) return currentDocument()->selection;
  return {};
}

}  // namespace

namespace standin::host {

bool select(const std::vector<std::uint64_t>& handles) {
  const std::lock_guard lock(hostMutex());
  if (currentDocument() == nullptr) return false;
  const Drawing& drawing = *currentDrawing();
  const auto isThere = [&drawing](std::uint64_t handle) { return drawing.find(handle) != nullptr; };
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
  std::vector<std::uint64_t> handles = selected(mode);
  if (handles.empty()) return RTERROR;
  ss[0] = run().nextSelectionSet++;
  ss[1] = kSelectionSetMark;
  run().selectionSets.emplace(ss[0], std::move(handles));
  return RTNORM;
}

int acedSSLength(const ads_name ss, AdInt32* length) {
  const Call call(kLength);
  if (call.isToFail() || length == nullptr) return RTERROR;
  const auto* handlesP = setOf(kLength, ss);
  if (handlesP == nullptr) return RTERROR;
  *length = static_cast<AdInt32>(handlesP->size());
  return RTNORM;
}

int acedSSName(const ads_name ss, AdInt32 i, ads_name entity) {
  const Call call(kName);
  if (call.isToFail() || entity == nullptr) return RTERROR;
  const auto* handlesP = setOf(kName, ss);
  if (handlesP == nullptr || i < 0 || static_cast<std::size_t>(i) >= handlesP->size()) return RTERROR;
  nameEntity(entity, (*handlesP)[static_cast<std::size_t>(i)]);
  return RTNORM;
}

int acedSSFree(const ads_name ss) {
  const Call call(kFree);
  if (call.isToFail() || setOf(kFree, ss) == nullptr) return RTERROR;
  run().selectionSets.erase(ss[0]);
  return RTNORM;
}

int acedRedraw(const ads_name entity, int mode) {
  const Call call(kRedraw);
  callRecord().redrawMode = mode;
  if (call.isToFail() || !isEntityName(entity) || currentDrawing() == nullptr) return RTERROR;
  return currentDrawing()->find(handleOf(entity)) == nullptr ? RTERROR : RTNORM;
}
