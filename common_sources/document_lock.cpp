#include "common_sources/document_lock.h"

#include "acdocman.h"

bool DocumentLock::lock() {
  if (isHeld()) return true;
  AcApDocument* const documentP = acDocManagerPtr()->curDocument();
  if (documentP == nullptr) return false;
  if (acDocManagerPtr()->lockDocument(documentP, AcAp::kWrite, nullptr, nullptr, true) == Acad::eOk)
    mDocumentP = documentP;
  return isHeld();
}

void DocumentLock::unlock() {
  if (!isHeld()) return;
  // If the host refuses, it is asked once more. Then the lock is forgotten in any case: a stale mark would
  // keep the next movement from locking. Only an exception of the host leaves the mark, and the next release
  // tries again.
  if (acDocManagerPtr()->unlockDocument(mDocumentP) != Acad::eOk)
    acDocManagerPtr()->unlockDocument(mDocumentP);
  mDocumentP = nullptr;
}

void DocumentLock::documentToBeDestroyed(AcApDocument* documentP) {
  if (!isHeldOn(documentP)) return;
  // Forgotten first: whatever the unlock does, the pointer is invalid afterwards.
  mDocumentP = nullptr;
  acDocManagerPtr()->unlockDocument(documentP);
}
