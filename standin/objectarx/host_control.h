/// The other side of the host stand-in: the calls with which the workbench and tests drive and inspect the
/// host. The module never sees this; it calls the host by the names of the SDK headers in `include/`. Main
/// thread only.
#ifndef STANDIN_HOST_CONTROL_H
#define STANDIN_HOST_CONTROL_H

#include "standin/fault_point.h"
#include "standin/objectarx/camera.h"
#include "standin/objectarx/counts.h"
#include "standin/objectarx/documents.h"
#include "standin/objectarx/listener.h"
#include "standin/objectarx/selection.h"
#include "standin_objectarx_api.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace standin::host {

/// The layout's sheet and the places of its floating viewports on it, from number 2 on: centres and sizes in
/// units of the sheet.
struct Layout {
  PaperView sheet;
  std::vector<PaperView> windows;
};

/// Starts a host with no document: variables, views, registries and counts as new; faults cleared; the
/// listener stays. A document that was open is gone, and no reactor is called. The calling thread becomes the
/// main thread. `drawn` is called by every drawing call, after the listener.
STANDIN_OBJECTARX_API void start(std::function<void()> drawn = {});

STANDIN_OBJECTARX_API Counts counts();

/// Faults by operation: free functions by name ("acedGetVar"), members as "AcGsView::setView". Operations
/// whose result cannot report a failure can only be made to throw.
STANDIN_OBJECTARX_API FaultRegistry& faults();

// --- what the user does, while the host is idle ---

/// Sets a system variable as SETVAR does: TILEMODE and CVPORT switch tab and viewport. False when there is no
/// such variable or the value is not one of its values.
STANDIN_OBJECTARX_API bool setVariable(const std::wstring& name, const std::wstring& value);
STANDIN_OBJECTARX_API std::optional<std::wstring> variable(const std::wstring& name);

/// Types a line at the command line, as the user does, and carries it out.
STANDIN_OBJECTARX_API void type(const std::wstring& text);

/// Carries out the text for the current document that has been queued longest by sendStringToExecute, or for
/// another that the text makes current; false when none waits.
STANDIN_OBJECTARX_API bool runQueuedText();

/// Value of the object id of an entity of the current document, 0 when there is none of that handle.
STANDIN_OBJECTARX_API std::uint64_t objectIdOf(std::uint64_t handle);

// --- views ---

/// Number of the current viewport (CVPORT).
STANDIN_OBJECTARX_API int currentViewport();

/// Camera of a viewport's graphics view as it is shown now; none when there is no such viewport.
STANDIN_OBJECTARX_API std::optional<Camera> camera(int viewport);
/// Camera that is stored as the viewport's own: what was shown and not committed is not in it.
STANDIN_OBJECTARX_API std::optional<Camera> committedCamera(int viewport);
/// Sets a viewport's camera, as a command would (the listener's viewChanged is called).
STANDIN_OBJECTARX_API bool setCamera(int viewport, const Camera& camera);
/// Projection of the current view, as a command would set it; the paper-space viewport keeps its own.
STANDIN_OBJECTARX_API void setPerspective(bool isPerspective);
/// What the paper-space viewport shows (viewport 1 of the layout).
STANDIN_OBJECTARX_API PaperView paperView();
STANDIN_OBJECTARX_API Layout layout();
/// Makes acgsGetGsView return a view whose isValid() is false, for tests of that path.
STANDIN_OBJECTARX_API void setViewValid(bool isValid);

}  // namespace standin::host

#endif
