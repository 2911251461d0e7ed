/// The other side of the host stand-in: what the workbench and tests do to the host and see of it. The module
/// never sees this; it calls the host by the names of the SDK headers in `include/`. Main thread only.
#ifndef STANDIN_HOST_CONTROL_H
#define STANDIN_HOST_CONTROL_H

#include "standin/fault_point.h"
#include "standin/objectarx/drawing.h"
#include "standin_objectarx_api.h"

// clang-format off
#include "gepnt3d.h"
#include "gevec3d.h"
// clang-format on

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace standin::host {

/// A view's camera. Lengths in drawing units, world frame; `up` as it was given, not re-orthogonalised.
struct Camera {
  AcGePoint3d position{0, 0, 1};
  AcGePoint3d target{0, 0, 0};
  AcGeVector3d up{0, 1, 0};
  double fieldWidth = 1;
  double fieldHeight = 1;
  bool isPerspective = false;
};

/// What a paper-space viewport or a model tile's table record shows: centre and visible size, drawing units.
struct PaperView {
  double centerX = 0;
  double centerY = 0;
  double width = 1;
  double height = 1;
};

/// The layout's sheet, and where its floating viewport (number 2) lies on it: centres and sizes, sheet units.
struct Layout {
  PaperView sheet;
  PaperView window;
};

/// Told of what happens at the host, in the middle of the call that does it.
class STANDIN_OBJECTARX_API Listener {
 public:
  virtual ~Listener() = default;
  /// AcGsView::update, before it draws.
  virtual void viewUpdated(int /*viewport*/, const Camera& /*camera*/) {}
  /// acgsSetViewParameters.
  virtual void viewCommitted(int /*viewport*/, const Camera& /*camera*/) {}
  /// A command or session event changed a view, or made another viewport current.
  virtual void viewChanged(int /*viewport*/, const Camera& /*camera*/) {}
  /// AcDbViewport::updateDisplay and acedVportTableRecords2Vports, before they draw.
  virtual void paperChanged(int /*viewport*/, const PaperView& /*shown*/) {}
  virtual void textSent(const std::wstring& /*text*/, bool /*activate*/) {}  ///< sendStringToExecute
  virtual void modulePrinted(const std::wstring& /*text*/) {}                ///< acutPrintf
  virtual void hostPrinted(const std::wstring& /*text*/) {}                  ///< what the host itself prints
};

/// Rules broken and things counted since start().
struct Report {
  std::uint64_t updates = 0;       ///< AcGsView::update
  std::uint64_t commits = 0;       ///< acgsSetViewParameters
  std::uint64_t paperUpdates = 0;  ///< updateDisplay and acedVportTableRecords2Vports
  std::uint64_t textsSent = 0;
  std::uint64_t modulePrints = 0;
  std::uint64_t locks = 0;
  std::uint64_t unlocks = 0;
  std::uint64_t openObjects = 0;         ///< objects open at this moment
  std::uint64_t selectionSetsAlive = 0;  ///< selection sets taken and not freed at this moment
  std::uint64_t reactors = 0;            ///< document reactors registered at this moment
  std::uint64_t commandsRegistered = 0;  ///< commands on the command stack at this moment
  std::uint64_t callsOffMainThread = 0;
  std::int64_t lockDepth = 0;  ///< locks held on the current document at this moment
  /// One line for each breach of a rule, naming the operation (a call off the main thread, an unlock without
  /// a lock, a close of an object that is not open ...). At most 100 lines are kept; further ones are
  /// counted.
  std::vector<std::string> breaches;
  std::uint64_t breachesInAll = 0;
};

/// Starts a host with no document: variables, views, registries and counts as new; faults cleared; the
/// listener stays. A document that was open is gone, and no reactor is told. The calling thread becomes the
/// main thread. `drawn` is called by every drawing call after the listener was told.
STANDIN_OBJECTARX_API void start(std::function<void()> drawn = {});

/// The listener, null for none. Not owned.
STANDIN_OBJECTARX_API void setListener(Listener* listenerP);

/// Makes the drawing the current document's, in the model tab with one tile, CVPORT 2, and the initial view
/// of the drawing (or, without one, a plan view of its extents). Replaces any document open before.
STANDIN_OBJECTARX_API void openDocument(std::unique_ptr<Drawing> drawing);

/// Closes the current document (reactors are told): curDocument() is null from then on.
STANDIN_OBJECTARX_API void closeDocument();

/// The current document's drawing, null when there is none.
STANDIN_OBJECTARX_API Drawing* drawing();

STANDIN_OBJECTARX_API Report report();

/// Faults by operation: free functions by name ("acedGetVar"), members as "AcGsView::setView". Operations
/// whose result cannot tell of a failure can only be made to throw.
STANDIN_OBJECTARX_API FaultRegistry& faults();

// --- what the user does, while the host is idle ---

/// Pre-selects these entities, in this order. False (nothing changed) when a handle is not in the drawing.
STANDIN_OBJECTARX_API bool select(const std::vector<std::uint64_t>& handles);
STANDIN_OBJECTARX_API void selectAll();
STANDIN_OBJECTARX_API void selectNone();
/// Handles of the pre-selection, in order.
STANDIN_OBJECTARX_API std::vector<std::uint64_t> selection();

/// Sets a system variable as SETVAR does: TILEMODE and CVPORT switch tab and viewport. False when there is no
/// such variable or the value is not one of its values.
STANDIN_OBJECTARX_API bool setVariable(const std::wstring& name, const std::wstring& value);
STANDIN_OBJECTARX_API std::optional<std::wstring> variable(const std::wstring& name);

/// Types a line at the command line, as the user does, and carries it out.
STANDIN_OBJECTARX_API void type(const std::wstring& text);

/// Carries out the text that has been queued longest by sendStringToExecute; false when none waits.
STANDIN_OBJECTARX_API bool runQueuedText();

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
/// Makes acgsGetGsView answer a view whose isValid() is false, for tests of that path.
STANDIN_OBJECTARX_API void setViewValid(bool isValid);

}  // namespace standin::host

#endif
