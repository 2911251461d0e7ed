/// Data of the module for each open document.
#ifndef HOST_DOC_DATA_H
#define HOST_DOC_DATA_H

#include "AcApDMgr.h"

/// Nothing yet. The manager forgets a document's entry when the document is destroyed.
class CDocData {};

/// Reports a document that is about to be destroyed to the AutoCadProxy too.
class DocDataManager : public AcApDataManager<CDocData> {
 public:
  void documentToBeDestroyed(AcApDocument* documentP) override;
};

#endif
