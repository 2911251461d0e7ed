/// Data of the module for each open document.
#ifndef HOST_DOC_DATA_H
#define HOST_DOC_DATA_H

#include "AcApDMgr.h"

/// Nothing yet. The manager forgets a document's entry when the document is destroyed.
class CDocData {};

using DocDataManager = AcApDataManager<CDocData>;

#endif
