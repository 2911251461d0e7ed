#include "LM_Daemon/src/logging.h"
#include "util/threads.h"

namespace {

/// Constructed and destroyed with the module itself, so that unloading the module closes its log. When the
/// process ends with the module loaded, the log is left as it is: the system may have ended a thread that
/// held the lock, and every later log call would wait for it for ever. No line is lost: each one is in the
/// file as soon as it is complete.
struct ProcessLog {
  ProcessLog() : mLogging() {}
  ~ProcessLog() {
    if (!isProcessEnding()) mLogging.~Logging();
  }
  // In a union, because its destructor must run only on the condition above.
  union {
    Logging mLogging;
  };
};

ProcessLog gProcessLog;

}  // namespace

Logging& processLog() {
  return gProcessLog.mLogging;
}
