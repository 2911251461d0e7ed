/// Graphics views by viewport number. Main thread only. Needs dbmain.h before it.
#ifndef STANDIN_ACGS_H
#define STANDIN_ACGS_H

#include "standin_objectarx_api.h"

class AcGsView;

/// Null for a viewport number that does not exist.
STANDIN_OBJECTARX_API AcGsView* acgsGetGsView(int viewportNumber, bool createIfNone);
/// Stores the view as the viewport's own. False (0) for a viewport that does not exist.
STANDIN_OBJECTARX_API Adesk::Boolean acgsSetViewParameters(int viewportNumber, const AcGsView* viewP,
                                                           bool regenRequired, bool rescaleRequired,
                                                           bool syncRequired = false);

#endif
