/// Data of the module for each open document.
#ifndef HOST_DOC_DATA_H
#define HOST_DOC_DATA_H

#include "AcApDMgr.h"

/// Nothing yet. The manager forgets a document's entry when the document is destroyed.
class CDocData {};

/// Tells the AutoCadProxy, too, that a document goes away.
class DocDataManager : public AcApDataManager<CDocData> {
 public:
  void documentToBeDestroyed(AcApDocument* documentP) override;
};

#endif
