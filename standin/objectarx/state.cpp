#include "state.h"

#include <algorithm>

namespace standin::host {
namespace {

/// Never destroyed: a module's own static objects may still call the host when the process ends.
std::unique_ptr<Run>& instance() {
  static std::unique_ptr<Run>& runP = *new std::unique_ptr<Run>(std::make_unique<Run>());
  return runP;
}

}  // namespace

Run& run() {
  return *instance();
}

void beginRun() {
  instance() = std::make_unique<Run>();
}

GraphicsView* viewOf(int viewport) {
  return currentDocument() != nullptr ? currentDocument()->viewOf(viewport) : nullptr;
}

bool mayWrite() {
  if (run().commandDepth > 0) return true;
  if (currentDocument() == nullptr) return false;
  const auto& locks = currentDocument()->locks;
  return std::any_of(locks.begin(), locks.end(), [](AcAp::DocLockMode mode) {
    return mode == AcAp::kWrite || mode == AcAp::kXWrite || mode == AcAp::kAutoWrite;
  });
}

}  // namespace standin::host
