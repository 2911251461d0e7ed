/// What commands and the session do to views; each change is stored, and the listener is called. Main thread
/// only, and not while the host's lock is held.
#ifndef STANDIN_VIEW_ACTIONS_H
#define STANDIN_VIEW_ACTIONS_H

#include "camera_math.h"
#include "variables.h"

#include <string>

namespace standin::host {

/// Shows all of the drawing in the current viewport, in its direction; all of the sheet in the paper-space
/// one.
void zoomToExtents();

/// Looks along the frame's direction onto all of the drawing. False in the paper-space viewport, which has
/// but one direction.
bool lookFrom(const ViewFrame& frame);

/// Sets a system variable and reports the view that is current then.
VariableChange changeVariable(const std::wstring& name, int value);

}  // namespace standin::host

#endif
