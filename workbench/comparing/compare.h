/// The subcommand `compare`: lists what two runs have not in common, and shows both in one page.
#ifndef WORKBENCH_COMPARE_H
#define WORKBENCH_COMPARE_H

#include "workbench/options.h"

#include <ostream>

namespace workbench {

/// Writes compare.json and index.html into the folder of the options and the differences to `out`; the last
/// line is the page's path. Returns kExitClean for equal runs and kExitUnclean for others. Throws InputError.
/// Main thread.
int runCompare(const CompareOptions& options, std::ostream& out, std::ostream& err);

}  // namespace workbench

#endif
