/// The active viewport and the tiles of the model tab. Main thread only.
#ifndef STANDIN_ACED_H
#define STANDIN_ACED_H

#include "standin_objectarx_api.h"

#include "acadstrc.h"
#include "dbid.h"

/// A viewport entity in layout mode, a viewport table record in tile mode; null when no drawing is open.
STANDIN_OBJECTARX_API AcDbObjectId acedActiveViewportId();
/// Writes what the tiles show into the viewport table records.
STANDIN_OBJECTARX_API Acad::ErrorStatus acedVports2VportTableRecords();
/// Shows on the tiles what the viewport table records hold.
STANDIN_OBJECTARX_API Acad::ErrorStatus acedVportTableRecords2Vports();

#endif
