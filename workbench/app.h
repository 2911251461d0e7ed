/// The program without main(), so that tests can run it in their own process.
#ifndef WORKBENCH_APP_H
#define WORKBENCH_APP_H

#include "workbench/exit_status.h"

#include <ostream>
#include <string>
#include <vector>

namespace workbench {

/// Runs the program with the arguments after its name and returns its ExitStatus. Main thread. Bad usage
/// and bad input give one line on `err`; nothing has been written then, except when the session turns out to
/// be wrong only in the middle of the run, which leaves the profile folder.
int runWorkbench(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace workbench

#endif
