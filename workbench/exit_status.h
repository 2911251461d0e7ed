/// What the program's exit status says.
#ifndef WORKBENCH_EXIT_STATUS_H
#define WORKBENCH_EXIT_STATUS_H

namespace workbench {

/// The run was clean or the runs are equal; the module or the host's rules were broken, or the runs differ;
/// bad usage or bad input.
enum ExitStatus : int { kExitClean = 0, kExitUnclean = 1, kExitBadInput = 2 };

}  // namespace workbench

#endif
