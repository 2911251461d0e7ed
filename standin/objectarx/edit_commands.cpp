// ERASE and SELECT. Objects are named by their handles, or all of them.
#include "built_ins.h"
#include "operation.h"
#include "printing.h"
#include "selection.h"
#include "state.h"
#include "text.h"

#include <cwchar>
#include <mutex>

namespace standin::host {
namespace {

using Handles = std::vector<std::uint64_t>;

bool parseHandle(const std::wstring& text, std::uint64_t& handle) {
  // At most 15 hexadecimal digits: 60 bits, so the conversion cannot overflow.
  if (text.empty() || text.size() > 15 ||
      text.find_first_not_of(L"0123456789ABCDEFabcdef") != std::wstring::npos)
    return false;
  handle = std::wcstoull(text.c_str(), nullptr, 16);
  return true;
}

/// Collects objects until a lone Enter.
class SelectingCommand : public ActiveCommand {
 public:
  std::wstring prompt() const override { return L"Select objects:"; }

  Next input(const std::wstring& text) override {
    if (text.empty()) {
      finish(mHandles);
      return Next::kDone;
    }
    const Handles found = objectsOf(text);
    if (found.empty()) hostPrint(L"*Invalid selection*");
    mHandles.insert(mHandles.end(), found.begin(), found.end());
    return Next::kMore;
  }

 protected:
  virtual void finish(const Handles& handles) = 0;

 private:
  static Handles objectsOf(const std::wstring& text) {
    const std::lock_guard lock(hostMutex());
    if (currentDrawing() == nullptr) return {};
    if (keyword(text) == L"ALL") return selectableHandles(*currentDrawing());
    std::uint64_t handle = 0;
    const bool isThere = parseHandle(text, handle) && currentDrawing()->find(handle) != nullptr &&
                         !currentDrawing()->isErased(handle);
    return isThere ? Handles{handle} : Handles{};
  }

  Handles mHandles;
};

void eraseObjects(const Handles& handles) {
  // First: the pre-selection must not name an erased entity.
  selectNone();
  const std::lock_guard lock(hostMutex());
  Drawing* drawingP = currentDrawing();
  if (drawingP == nullptr) return;
  for (const std::uint64_t handle : handles) {
    const DrawnEntity* entityP = drawingP->find(handle);
    // The host passes over entities on locked layers without an error.
    if (entityP != nullptr && !drawingP->layer(entityP->properties().layer).isLocked) drawingP->erase(handle);
  }
}

class EraseCommand final : public SelectingCommand {
 protected:
  void finish(const Handles& handles) override { eraseObjects(handles); }
};

class SelectCommand final : public SelectingCommand {
 protected:
  // What the command selected is the pre-selection of the next one.
  void finish(const Handles& handles) override { select(handles); }
};

}  // namespace

/// What is pre-selected is erased at once.
std::unique_ptr<ActiveCommand> makeEraseCommand() {
  const Handles handles = selection();
  if (handles.empty()) return std::make_unique<EraseCommand>();
  eraseObjects(handles);
  return nullptr;
}

std::unique_ptr<ActiveCommand> makeSelectCommand() {
  return std::make_unique<SelectCommand>();
}

}  // namespace standin::host
