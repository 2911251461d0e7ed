#include "host/doc_data.h"

#include "common_sources/auto_cad_proxy.h"

void DocDataManager::documentToBeDestroyed(AcApDocument* documentP) try {
  // The proxy first: it must not keep the pointer, whatever the base class meets.
  if (AutoCadProxy* const proxyP = AutoCadProxy::instance()) proxyP->documentToBeDestroyed(documentP);
  AcApDataManager<CDocData>::documentToBeDestroyed(documentP);
} catch (...) {
  // The host handles no exceptions, and destroys the document anyway.
}
