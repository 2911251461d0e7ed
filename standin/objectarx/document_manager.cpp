// The document manager through which a module reaches the documents.
#include "call_record.h"
#include "listener.h"
#include "operation.h"
#include "state.h"

#include <algorithm>
#include <mutex>
#include <utility>

using namespace standin::host;

namespace {

const Operation kManager("acDocManagerPtr", Result::kTellsNothing);
const Operation kCurDocument("AcApDocManager::curDocument", Result::kTellsFailure);
const Operation kLock("AcApDocManager::lockDocument", Result::kTellsFailure);
const Operation kUnlock("AcApDocManager::unlockDocument", Result::kTellsFailure);
const Operation kSend("AcApDocManager::sendStringToExecute", Result::kTellsFailure);
const Operation kAddReactor("AcApDocManager::addReactor", Result::kTellsNothing);
const Operation kRemoveReactor("AcApDocManager::removeReactor", Result::kTellsNothing);

/// The open document at that address, null for none. The pointer is compared, never
/// followed: it may be that of a closed document, and using one is a breach.
Document* openDocumentOf(const Operation& operation, const AcApDocument* documentP) {
  if (documentP == nullptr) return nullptr;
  for (const auto& openP : run().documents)
    if (openP.get() == documentP) return openP.get();
  breach(operation, "called for a document that is not open");
  return nullptr;
}

class DocManager final : public AcApDocManager {
 public:
  AcApDocument* curDocument() const override {
    return Call(kCurDocument).isToFail() ? nullptr : currentDocument();
  }

  Acad::ErrorStatus lockDocument(AcApDocument* documentP, AcAp::DocLockMode mode, const ACHAR* globalCommand,
                                 const ACHAR* localCommand, bool prompt) override {
    const Call call(kLock);
    // Recorded before the fault: a test sees the arguments of a failed call too.
    callRecord().lockMode = mode;
    callRecord().hasLockNames = globalCommand != nullptr || localCommand != nullptr;
    callRecord().isLockPrompted = prompt;
    if (call.isToFail()) return Acad::eLockViolation;
    Document* openP = openDocumentOf(kLock, documentP);
    if (openP == nullptr) return Acad::eNoDocument;
    // Locks nest: each needs an unlock of its own.
    openP->locks.push_back(mode);
    ++runningCounts().locks;
    return Acad::eOk;
  }

  Acad::ErrorStatus unlockDocument(AcApDocument* documentP) override {
    const Call call(kUnlock);
    if (call.isToFail()) return Acad::eLockViolation;
    Document* openP = openDocumentOf(kUnlock, documentP);
    if (openP == nullptr) return Acad::eNoDocument;
    if (openP->locks.empty()) {
      breach(kUnlock, "called without a lock");
      return Acad::eNotApplicable;
    }
    // The newest one: unlockDocument does not say which.
    openP->locks.pop_back();
    ++runningCounts().unlocks;
    return Acad::eOk;
  }

  Acad::ErrorStatus sendStringToExecute(AcApDocument* documentP, const ACHAR* text, bool activate,
                                        bool wrapUpInactiveDoc, bool echo) override {
    Call call(kSend);
    callRecord().wrapUpInactiveDoc = wrapUpInactiveDoc;
    callRecord().echo = echo;
    if (call.isToFail() || text == nullptr) return Acad::eInvalidInput;
    Document* openP = openDocumentOf(kSend, documentP);
    if (openP == nullptr) return Acad::eNoDocument;
    const std::wstring sent = text;
    // Queued, not run: the host carries the text out when it is idle, after this call has returned.
    openP->queue.push_back({sent, activate});
    ++runningCounts().textsSent;
    call.leave();
    notify(&Listener::textSent, sent, activate);
    return Acad::eOk;
  }

  void addReactor(AcApDocManagerReactor* reactorP) override {
    const Call call(kAddReactor);
    auto& reactors = run().reactors;
    if (reactorP == nullptr || std::find(reactors.begin(), reactors.end(), reactorP) != reactors.end())
      return breach(kAddReactor, "called for no reactor, or for one that is there");
    reactors.push_back(reactorP);
  }

  void removeReactor(AcApDocManagerReactor* reactorP) override {
    const std::lock_guard lock(hostMutex());
    auto& reactors = run().reactors;
    const auto found = std::find(reactors.begin(), reactors.end(), reactorP);
    const bool isThere = found != reactors.end();
    // Removed even when the call is to throw: its owner is about to be gone, and the host must not call it
    // then.
    if (isThere) reactors.erase(found);
    const Call call(kRemoveReactor);
    if (!isThere) breach(kRemoveReactor, "called for a reactor that is not there");
  }
};

}  // namespace

AcApDocManager* acDocManagerPtr() {
  const Call call(kManager);
  static DocManager manager;
  return &manager;
}
