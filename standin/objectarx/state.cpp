#include "state.h"

#include <algorithm>

namespace standin::host {

State& state() {
  // Never destroyed: a module's own static objects may still call the host when the process ends.
  static State& instance = *new State;
  return instance;
}

FaultRegistry& faultRegistry() {
  static FaultRegistry& instance = *new FaultRegistry;
  return instance;
}

bool mayWrite() {
  if (run().mCommandDepth > 0) return true;
  if (!run().mDocumentP) return false;
  const auto& locks = run().mDocumentP->mLocks;
  return std::any_of(locks.begin(), locks.end(), [](AcAp::DocLockMode mode) {
    return mode == AcAp::kWrite || mode == AcAp::kXWrite || mode == AcAp::kAutoWrite;
  });
}

std::vector<std::uint64_t> selectableHandles() {
  std::vector<std::uint64_t> result;
  if (currentDrawing() == nullptr) return result;
  const Drawing& drawing = *currentDrawing();
  for (const auto& entityP : drawing.entities()) {
    const EntityProperties& properties = entityP->properties();
    if (!drawing.isErased(properties.handle) && drawing.layer(properties.layer).isVisible)
      result.push_back(properties.handle);
  }
  return result;
}

void drawn() {
  // The hook may end the run, and with it itself.
  const auto hookP = run().mDrawnP;
  if (hookP != nullptr && *hookP) (*hookP)();
}

}  // namespace standin::host
