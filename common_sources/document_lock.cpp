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
  // A document that refuses stays marked: the next release tries again.
  if (acDocManagerPtr()->unlockDocument(mDocumentP) == Acad::eOk) mDocumentP = nullptr;
}

void DocumentLock::documentToBeDestroyed(AcApDocument* documentP) {
  if (!isHeld() || documentP != mDocumentP) return;
  unlock();
  mDocumentP = nullptr;
}
