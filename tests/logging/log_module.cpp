/// A module with a log of its own, to be loaded and unloaded.
#include "LM_Daemon/src/logging.h"

extern "C" __attribute__((visibility("default"))) void logInto(const char* pathP) {
  LogPars pars;
  pars.mLogFile = pathP;
  processLog().init(pars);
  LM_LOG(kInfo, "Module", "Module::run") << "text " << 2.5;
}
