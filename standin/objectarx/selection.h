/// What the user has selected before a command begins. Handles of the current document; main thread only,
/// and not while the host's lock is held.
#ifndef STANDIN_SELECTION_H
#define STANDIN_SELECTION_H

#include "standin_objectarx_api.h"

#include <cstdint>
#include <vector>

namespace standin::host {

/// Pre-selects these entities, in this order. False (nothing changed) when a handle is not in the drawing.
STANDIN_OBJECTARX_API bool select(const std::vector<std::uint64_t>& handles);
STANDIN_OBJECTARX_API void selectAll();
STANDIN_OBJECTARX_API void selectNone();
/// Handles of the pre-selection, in order.
STANDIN_OBJECTARX_API std::vector<std::uint64_t> selection();

}  // namespace standin::host

#endif
