#include "LM_Daemon/src/logging.h"

namespace {

/// Made and destroyed with the module itself, so that unloading the module closes its log.
Logging gProcessLog;

}  // namespace

Logging& processLog() {
  return gProcessLog;
}
