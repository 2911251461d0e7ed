/// Opens, closes and switches documents, as the user does. Main thread only, and not while the host's lock is
/// held.
#ifndef STANDIN_DOCUMENTS_H
#define STANDIN_DOCUMENTS_H

#include "standin/objectarx/drawing.h"
#include "standin_objectarx_api.h"

#include <memory>
#include <string>
#include <vector>

namespace standin::host {

/// Opens a document with the drawing and makes it current, in the model tab with one tile, CVPORT 2, and the
/// drawing's own view (or, without one, a plan view of its extents). Without a name it becomes the next
/// "DrawingN.dwg". False, and nothing opened, when a document of that name is open. Reactors and the listener
/// (viewChanged) are called.
STANDIN_OBJECTARX_API bool openDocument(std::unique_ptr<Drawing> drawing, const std::wstring& name = {});

/// Closes the current document, and makes the one current that was so before it; without one, curDocument()
/// is null from then on. Reactors and the listener are called.
STANDIN_OBJECTARX_API void closeDocument();

/// Makes the document of that name current, in any case of letters. False when there is none. Reactors and
/// the listener are called, unless it is current already.
STANDIN_OBJECTARX_API bool switchDocument(const std::wstring& name);

/// In the order in which they were current: the last one is so now.
STANDIN_OBJECTARX_API std::vector<std::wstring> documentNames();

/// The current document's drawing, null when there is none.
STANDIN_OBJECTARX_API Drawing* drawing();

}  // namespace standin::host

#endif
