/// The write lock that the module holds on a document while the cap pans a sheet or moves objects. Main
/// thread; throws what the host throws.
#ifndef COMMON_SOURCES_DOCUMENT_LOCK_H
#define COMMON_SOURCES_DOCUMENT_LOCK_H

class AcApDocument;

class DocumentLock {
 public:
  bool isHeld() const { return mDocumentP != nullptr; }
  bool isHeldOn(const AcApDocument* documentP) const { return isHeld() && documentP == mDocumentP; }

  /// Locks the current document unless a lock is held already. False when there is no document or the host
  /// refuses.
  bool lock();

  /// Unlocks the document that was locked, which need not be the current one any more. The lock is not held
  /// afterwards, unless the host throws.
  void unlock();

  /// Unlocks the document and forgets it, if it is the locked one; it is forgotten also when the host throws.
  void documentToBeDestroyed(AcApDocument* documentP);

 private:
  AcApDocument* mDocumentP = nullptr;  ///< the locked document; null when there is none
};

#endif
