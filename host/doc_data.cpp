#include "host/doc_data.h"

#include "common_sources/auto_cad_proxy.h"

void DocDataManager::documentToBeDestroyed(AcApDocument* documentP) try {
  AcApDataManager<CDocData>::documentToBeDestroyed(documentP);
  if (AutoCadProxy* const proxyP = AutoCadProxy::instance()) proxyP->documentToBeDestroyed(documentP);
} catch (...) {
  // The host handles no exceptions, and destroys the document anyway.
}
