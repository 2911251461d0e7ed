/// The tolerance that geometry uses when none is given.
#ifndef STANDIN_GEGBL_H
#define STANDIN_GEGBL_H

#include "getol.h"

struct AcGeContext {
  static constexpr AcGeTol gTol{};
};

#endif
