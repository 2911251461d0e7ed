#include "documents.h"

#include "listener.h"
#include "operation.h"
#include "state.h"
#include "text.h"

#include <algorithm>
#include <cassert>
#include <mutex>
#include <utility>

namespace standin::host {
namespace {

using Lock = std::unique_lock<std::recursive_mutex>;

/// Calls every reactor that is registered. Not while the host's lock is held: reactors are the module's, and
/// may wait for another of its threads.
template <class Event, class Argument>
void callReactors(Event event, Argument argument) {
  Lock lock(hostMutex());
  // A copy: a reactor may add or remove reactors while it is called.
  const std::vector<AcApDocManagerReactor*> reactors = run().reactors;
  for (AcApDocManagerReactor* reactorP : reactors) {
    const auto& registered = run().reactors;
    // An earlier reactor may have removed this one, and it may have been destroyed since.
    if (std::find(registered.begin(), registered.end(), reactorP) == registered.end()) continue;
    lock.unlock();
    bool hasThrown = false;
    try {
      (reactorP->*event)(argument);
      // The host is not built to be unwound through: whatever a module throws ends here and is a breach.
    } catch (...) {
      hasThrown = true;
    }
    lock.lock();
    if (hasThrown) breach("a reactor of the module", "let something be thrown into the host");
  }
}

using Reactor = AcApDocManagerReactor;

void reportCurrentView() {
  Lock lock(hostMutex());
  assert(currentDocument() != nullptr && "a document that was made current is open");
  const int viewport = currentDocument()->currentViewport();
  const Camera camera = currentDocument()->currentView().live();
  lock.unlock();
  notify(&Listener::viewChanged, viewport, camera);
}

/// Takes the document out of the list of open ones.
std::unique_ptr<Document> take(const Document* documentP) {
  auto& documents = run().documents;
  const auto found = std::find_if(documents.begin(), documents.end(),
                                  [documentP](const auto& openP) { return openP.get() == documentP; });
  assert(found != documents.end() && "only an open document can be taken");
  std::unique_ptr<Document> takenP = std::move(*found);
  documents.erase(found);
  return takenP;
}

/// The previous one may be null.
void activate(Document* documentP, Document* previousP) {
  if (previousP != nullptr) callReactors(&Reactor::documentToBeDeactivated, previousP);
  callReactors(&Reactor::documentToBeActivated, documentP);
  Lock lock(hostMutex());
  // The order of the list is the order of activation: the current document is the last.
  run().documents.push_back(take(documentP));
  lock.unlock();
  callReactors(&Reactor::documentBecameCurrent, documentP);
  callReactors(&Reactor::documentActivated, documentP);
  reportCurrentView();
}

Document* documentNamed(const std::wstring& name) {
  for (const auto& documentP : run().documents)
    if (isSameName(documentP->name, name)) return documentP.get();
  return nullptr;
}

std::wstring newName() {
  return L"Drawing" + std::to_wstring(++run().newDocuments) + L".dwg";
}

/// Nothing of a document that has been closed can be closed or freed later.
void endWhatIsLeft(const Document& document) {
  if (!document.locks.empty()) breach("closing the document", "it is still locked");
  // The objects go with the document, so the count must forget them after the breach is recorded.
  const std::uint64_t open = document.openObjects();
  if (open != 0) breach("closing the document", "objects of it are still open");
  assert(open <= runningCounts().openObjects && "every opening of an object is counted");
  runningCounts().openObjects -= open;
  auto& sets = run().selectionSets;
  for (auto set = sets.begin(); set != sets.end();) {
    if (set->second.ownerP != &document) {
      ++set;
      continue;
    }
    breach("closing the document", "a selection set of it is not freed");
    set = sets.erase(set);
  }
}

}  // namespace

bool openDocument(std::unique_ptr<Drawing> drawing, const std::wstring& name) {
  assert(isMainThread() && "documents are opened on the main thread");
  Lock lock(hostMutex());
  if (documentNamed(name) != nullptr) return false;
  auto openedP = std::make_unique<Document>(std::move(drawing), name.empty() ? newName() : name);
  Document* const documentP = openedP.get();
  Document* const previousP = currentDocument();
  lock.unlock();
  callReactors(&Reactor::documentCreateStarted, documentP);
  lock.lock();
  // Open, but not current: that is the last one.
  run().documents.insert(run().documents.begin(), std::move(openedP));
  lock.unlock();
  callReactors(&Reactor::documentCreated, documentP);
  activate(documentP, previousP);
  return true;
}

void closeDocument() {
  assert(isMainThread() && "documents are closed on the main thread");
  Lock lock(hostMutex());
  Document* const closingP = currentDocument();
  if (closingP == nullptr) return;
  lock.unlock();
  callReactors(&Reactor::documentToBeDestroyed, closingP);
  lock.lock();
  endWhatIsLeft(*closingP);
  // A copy: documentDestroyed is called with the name when the document is gone.
  const std::wstring name = closingP->name;
  take(closingP).reset();
  Document* const nextP = currentDocument();
  lock.unlock();
  callReactors(&Reactor::documentDestroyed, name.c_str());
  if (nextP != nullptr) return activate(nextP, nullptr);
  // The last document was closed: the host reports null as the current one.
  callReactors(&Reactor::documentBecameCurrent, nextP);
}

bool switchDocument(const std::wstring& name) {
  assert(isMainThread() && "documents are switched on the main thread");
  Lock lock(hostMutex());
  Document* const documentP = documentNamed(name);
  Document* const previousP = currentDocument();
  lock.unlock();
  if (documentP == nullptr) return false;
  if (documentP != previousP) activate(documentP, previousP);
  return true;
}

std::vector<std::wstring> documentNames() {
  const Lock lock(hostMutex());
  std::vector<std::wstring> names;
  for (const auto& documentP : run().documents) names.push_back(documentP->name);
  return names;
}

Drawing* drawing() {
  return currentDrawing();
}

}  // namespace standin::host
