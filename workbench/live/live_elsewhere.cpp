#include "workbench/live/run_live.h"
#include "workbench/options.h"

namespace workbench {

int runLive(const LiveOptions&, std::ostream&, std::ostream&) {
  throw UsageError("command line: live runs on Linux only");
}

}  // namespace workbench
