/// Messages the host sends to a module's entry point, what the module returns, and how objects compare.
#ifndef STANDIN_RXDEFS_H
#define STANDIN_RXDEFS_H

#include "adesk.h"

struct AcRx {
  // The underlying type is fixed because a host may send numbers that are not in the list.
  enum AppMsgCode : int {
    kNullMsg = 0,
    kInitAppMsg = 1,
    kUnloadAppMsg = 2,
    kLoadDwgMsg = 3,
    kUnloadDwgMsg = 4,
    kInvkSubrMsg = 5,
    kCfgMsg = 6,
    kEndMsg = 7,
    kQuitMsg = 8,
    kSaveMsg = 9,
    kDependencyMsg = 10,
    kNoDependencyMsg = 11,
    kOleUnloadAppMsg = 12,
    kPreQuitMsg = 13,
    kInitDialogMsg = 14,
    kEndDialogMsg = 15
  };
  enum AppRetCode : int { kRetOK = 0, kRetError = 3 };
  enum Ordering { kLessThan = -1, kEqual = 0, kGreaterThan = 1, kNotOrderable = 2 };
};

#endif
