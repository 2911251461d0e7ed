/// The program without main(), so that tests can run it in their own process.
#ifndef WORKBENCH_APP_H
#define WORKBENCH_APP_H

#include <ostream>
#include <string>
#include <vector>

namespace workbench {

/// The run was clean or the runs are equal; the module or the host's rules were broken, or the runs differ;
/// bad usage or bad input.
enum ExitStatus : int { kExitClean = 0, kExitUnclean = 1, kExitBadInput = 2 };

/// Runs the program with the arguments after its name and returns its exit status. Main thread. Bad usage
/// and bad input give one line on `err`; nothing has been written then, except when the session turns out to
/// be wrong only in the middle of the run, which leaves the profile folder.
int runWorkbench(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace workbench

#endif
