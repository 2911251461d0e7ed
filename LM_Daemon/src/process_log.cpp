#include "LM_Daemon/src/logging.h"
#include "util/threads.h"

namespace {

/// Made and destroyed with the module itself, so that unloading the module closes its log. A process that
/// ends with the module loaded leaves the log as it is: a thread that was ended within it has its lock, for
/// which whoever logs from now on would wait. Each finished line is in the file.
struct ProcessLog {
  ProcessLog() : mLogging() {}
  ~ProcessLog() {
    if (!isProcessEnding()) mLogging.~Logging();
  }
  union {
    Logging mLogging;
  };
};

ProcessLog gProcessLog;

}  // namespace

Logging& processLog() {
  return gProcessLog.mLogging;
}
