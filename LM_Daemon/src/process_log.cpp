#include <memory>

#include "LM_Daemon/src/logging.h"
#include "util/threads.h"

namespace {

/// Made and destroyed with the module itself, so that unloading the module closes its log. A process that ends with the
/// module loaded leaves the log as it is: a thread that was ended within it has its lock, and each line is in the file
/// by now.
struct ProcessLog {
  ~ProcessLog() {
    if (isProcessEnding()) static_cast<void>(mLoggingP.release());
  }
  std::unique_ptr<Logging> mLoggingP = std::make_unique<Logging>();
};

ProcessLog gProcessLog;

}  // namespace

Logging& processLog() {
  return *gProcessLog.mLoggingP;
}
