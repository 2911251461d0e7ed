/// The system variables that a module reads: tab, viewport, projection, command in progress.
#include "variables.h"

#include "camera_math.h"
#include "operation.h"
#include "state.h"
#include "text.h"

#include "acedads.h"

namespace standin::host {
namespace {

const Operation kGetVar("acedGetVar", Result::kTellsFailure);

enum class Variable { kTileMode, kCvport, kPerspective, kCmdActive };

std::optional<Variable> variableOf(std::wstring_view name) {
  if (isSameName(name, L"TILEMODE")) return Variable::kTileMode;
  if (isSameName(name, L"CVPORT")) return Variable::kCvport;
  if (isSameName(name, L"PERSPECTIVE")) return Variable::kPerspective;
  if (isSameName(name, L"CMDACTIVE")) return Variable::kCmdActive;
  return std::nullopt;
}

VariableChange setTileMode(Document& document, int value) {
  if (value != 0 && value != 1) return VariableChange::kNotAllowed;
  // The host draws a tab anew when it comes to it: what was not committed is lost. Setting the same value
  // again changes nothing.
  if (document.isModelTab != (value == 1)) document.revertViews();
  document.isModelTab = value == 1;
  return VariableChange::kDone;
}

VariableChange setCvport(Document& document, int value) {
  if (document.viewOf(value) == nullptr) return VariableChange::kNotAllowed;
  // The model tab has one tile, which is current already.
  if (!document.isModelTab) document.layoutViewport = value;
  return VariableChange::kDone;
}

VariableChange setPerspectiveVariable(Document& document, int value) {
  if ((value != 0 && value != 1) || document.isOnPaper()) return VariableChange::kNotAllowed;
  // Stored at once, as by a command: it is not a view that a module only shows.
  GraphicsView& view = document.currentView();
  view.store(withProjection(view.live(), value == 1));
  return VariableChange::kDone;
}

}  // namespace

std::optional<int> readVariable(std::wstring_view name) {
  const std::optional<Variable> variable = variableOf(name);
  if (!variable || currentDocument() == nullptr) return std::nullopt;
  Document& document = *currentDocument();
  switch (*variable) {
    case Variable::kTileMode:
      return document.isModelTab ? 1 : 0;
    case Variable::kCvport:
      return document.currentViewport();
    case Variable::kPerspective:
      return document.currentView().live().isPerspective ? 1 : 0;
    case Variable::kCmdActive:
      return run().commandDepth > 0 || document.commandLine.isCommandActive() ? 1 : 0;
  }
  return std::nullopt;
}

VariableChange writeVariable(std::wstring_view name, int value) {
  const std::optional<Variable> variable = variableOf(name);
  if (!variable || currentDocument() == nullptr) return VariableChange::kUnknown;
  switch (*variable) {
    case Variable::kTileMode:
      return setTileMode(*currentDocument(), value);
    case Variable::kCvport:
      return setCvport(*currentDocument(), value);
    case Variable::kPerspective:
      return setPerspectiveVariable(*currentDocument(), value);
    // Read only, as in the host.
    case Variable::kCmdActive:
      return VariableChange::kNotAllowed;
  }
  return VariableChange::kUnknown;
}

}  // namespace standin::host

int acedGetVar(const ACHAR* name, resbuf* result) {
  using namespace standin::host;
  const Call call(kGetVar);
  if (call.isToFail() || name == nullptr || result == nullptr) return RTERROR;
  const std::optional<int> value = readVariable(name);
  if (!value) return RTERROR;
  // One record, not a list: the module must not free anything.
  result->rbnext = nullptr;
  result->restype = RTSHORT;
  result->resval.rint = static_cast<short>(*value);
  return RTNORM;
}
