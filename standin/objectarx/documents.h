/// Opens and closes documents, as the user does. Main thread only, and not while the host's lock is held.
#ifndef STANDIN_DOCUMENTS_H
#define STANDIN_DOCUMENTS_H

#include "standin/objectarx/drawing.h"
#include "standin_objectarx_api.h"

#include <memory>

namespace standin::host {

/// Makes the drawing the current document's, in the model tab with one tile, CVPORT 2, and the initial view
/// of the drawing (or, without one, a plan view of its extents). Replaces any document open before.
STANDIN_OBJECTARX_API void openDocument(std::unique_ptr<Drawing> drawing);

/// Closes the current document (reactors are told): curDocument() is null from then on.
STANDIN_OBJECTARX_API void closeDocument();

/// The current document's drawing, null when there is none.
STANDIN_OBJECTARX_API Drawing* drawing();

}  // namespace standin::host

#endif
