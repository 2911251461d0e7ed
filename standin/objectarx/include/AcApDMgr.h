/// Data of a module for each open document. Compiled into the module. Main thread only.
#ifndef STANDIN_ACAPDMGR_H
#define STANDIN_ACAPDMGR_H

#include "acdocman.h"

#include <map>

/// A document's T is made when it is first asked for and lives until the document is destroyed.
template <class T>
class AcApDataManager : public AcApDocManagerReactor {
 public:
  AcApDataManager() { acDocManager->addReactor(this); }
  ~AcApDataManager() override {
    // A reactor that stays registered would lead into code that is gone: the host is asked twice. A
    // destructor must not throw.
    for (int attempt = 0; attempt < 2; ++attempt) {
      try {
        acDocManager->removeReactor(this);
        return;
      } catch (...) {
      }
    }
  }
  void documentToBeDestroyed(AcApDocument* documentP) override { mData.erase(documentP); }

  T& docData(AcApDocument* documentP) { return mData[documentP]; }
  T& docData() { return docData(acDocManager->curDocument()); }

 private:
  std::map<AcApDocument*, T> mData;
};

#endif
