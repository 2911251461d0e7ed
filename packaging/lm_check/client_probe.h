/// Loads the client library and talks to the driver as the module does, under another name. Windows only.
#ifndef PACKAGING_LM_CHECK_CLIENT_PROBE_H
#define PACKAGING_LM_CHECK_CLIENT_PROBE_H

#include "packaging/lm_check/machine.h"

/// Fills in the results of loading `client.path`, calling it, and disconnecting. When the driver hangs, a
/// thread remains in the library: the program has to end without unloading it.
void probeClient(ClientLibrary& client);

#endif
