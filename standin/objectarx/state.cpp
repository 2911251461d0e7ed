/// The run of the host: one at a time, replaced whole by the next.
#include "state.h"

#include "object_id.h"

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
  // A new object rather than a reset of each field: nothing of the old run can be left.
  instance() = std::make_unique<Run>();
}

GraphicsView* viewOf(int viewport) {
  return currentDocument() != nullptr ? currentDocument()->viewOf(viewport) : nullptr;
}

Document* documentOf(std::uint64_t id) {
  const auto& documents = run().documents;
  const auto found = std::find_if(documents.begin(), documents.end(), [id](const auto& documentP) {
    return documentP->drawing->serial() == drawingOf(id);
  });
  return found == documents.end() ? nullptr : found->get();
}

bool mayWrite(const Document& document) {
  // While a command runs, the host has locked the current document for it, and only that one.
  return document.isWritable() || (run().commandDepth > 0 && &document == currentDocument());
}

}  // namespace standin::host
