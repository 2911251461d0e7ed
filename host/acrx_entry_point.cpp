// What the host looks for in the module: the exported functions.
#include "host/auto_cad_app.h"

IMPLEMENT_ARX_ENTRYPOINT(CAutoCAD2011App);
