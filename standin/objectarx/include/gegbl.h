/// The tolerance that geometry uses when none is given.
#ifndef STANDIN_GEGBL_H
#define STANDIN_GEGBL_H

#include "standin_objectarx_api.h"

#include "getol.h"

struct AcGeContext {
  /// The host's; no module has a copy of its own.
  STANDIN_OBJECTARX_API static AcGeTol gTol;
};

#endif
