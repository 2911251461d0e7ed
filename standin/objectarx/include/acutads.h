/// Printing on the host's command line. Main thread only.
#ifndef STANDIN_ACUTADS_H
#define STANDIN_ACUTADS_H

#include "standin_objectarx_api.h"

#include "adesk.h"

/// As printf; `%s` takes a wide string. RTNORM, or RTERROR when nothing was printed.
extern "C" STANDIN_OBJECTARX_API int acutPrintf(const ACHAR* format, ...);

#endif
