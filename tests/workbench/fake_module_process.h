/// The built program with a module of the tests' own, which does wrong what a test asks for.
#ifndef TESTS_WORKBENCH_FAKE_MODULE_PROCESS_H
#define TESTS_WORKBENCH_FAKE_MODULE_PROCESS_H

#include "tests/support/workbench_process.h"

namespace workbench {

using Outcome = WorkbenchProcess::Outcome;

/// Its folder holds the drawing `a.dxf`: a line, a circle, and a text that is not understood.
class FakeModuleProcess : public WorkbenchProcess {
 public:
  FakeModuleProcess();

  /// Runs "workbench ARGUMENTS" in the folder; `fault` is what the fake module does wrong.
  Outcome run(const std::string& arguments, const std::string& fault = {}) const;

  /// Writes the session and replays it with the fake module, drawing `a.dxf` and the folder `out` (made if
  /// need be).
  Outcome replay(const std::string& session, const std::string& options = {},
                 const std::string& fault = {}) const;
};

}  // namespace workbench

#endif
