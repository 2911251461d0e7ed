/// The Windows functions as operations of the stand-in.
#ifndef STANDIN_WIN32_OPERATIONS_H
#define STANDIN_WIN32_OPERATIONS_H

#include "standin/operation.h"
#include "standin_win32_faults.h"

namespace standin::windows {

/// A function of Windows, by its name.
using Operation = OperationOf<faults>;

}  // namespace standin::windows

#endif
