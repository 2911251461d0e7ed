/// Everything that a run of the host holds. Only while the host's lock is held, which a Call does.
#ifndef STANDIN_STATE_H
#define STANDIN_STATE_H

#include "document.h"

// clang-format off
#include <windows.h>
#include "accmd.h"
#include "acdocman.h"
// clang-format on

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace standin::host {

struct RegisteredCommand {
  std::wstring group;
  std::wstring globalName;
  std::wstring localName;
  std::function<void()> function;
};

struct SelectionSet {
  const Document* ownerP = nullptr;
  std::vector<std::uint64_t> ids;  ///< of the entities, in order
};

struct Run {
  std::vector<std::unique_ptr<Document>>
      documents;         ///< in the order of their activation: the last is current
  int newDocuments = 0;  ///< named by the host itself
  bool isViewValid = true;
  std::map<std::int64_t, SelectionSet> selectionSets;
  std::int64_t nextSelectionSet = 1;
  std::uint64_t firstRedrawn = 0;  ///< id of the entity that a run of redraws began with, 0 outside of one
  std::vector<AcApDocManagerReactor*> reactors;
  std::vector<RegisteredCommand> commands;
  int commandDepth = 0;     ///< commands that are being carried out: they may write without a lock
  CommandLine commandLine;  ///< while no document is open
};

Run& run();
/// A run without documents.
void beginRun();

/// Null when no document is open.
inline Document* currentDocument() {
  return run().documents.empty() ? nullptr : run().documents.back().get();
}
inline Drawing* currentDrawing() {
  return currentDocument() != nullptr ? currentDocument()->drawing.get() : nullptr;
}
/// The view of a viewport of the current document's tab, null when there is none of that number.
GraphicsView* viewOf(int viewport);

/// The open document that the object with that id belongs to, null for none.
Document* documentOf(std::uint64_t id);
/// The document is locked for write, or it is the current one and a command is being carried out.
bool mayWrite(const Document& document);

}  // namespace standin::host

#endif
