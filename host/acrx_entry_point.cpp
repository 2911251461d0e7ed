// What the host looks for in the module: the two exported functions and the command table.
#include "host/auto_cad_app.h"

#include "acutads.h"

IMPLEMENT_ARX_ENTRYPOINT(CAutoCAD2011App);

ACED_ARXCOMMAND_ENTRY_AUTO(CAutoCAD2011App, LMGroup, LM_Toggle_Rotation_Center, LM_Toggle_Rotation_Center,
                           ACRX_CMD_MODAL, nullptr);
ACED_ARXCOMMAND_ENTRY_AUTO(CAutoCAD2011App, LMGroup, LM_Toggle_Rotation_Axis, LM_Toggle_Rotation_Axis,
                           ACRX_CMD_MODAL, nullptr);
ACED_ARXCOMMAND_ENTRY_AUTO(CAutoCAD2011App, LMGroup, LM_Toggle_Scroll_Mode, LM_Toggle_Scroll_Mode,
                           ACRX_CMD_MODAL, nullptr);
ACED_ARXCOMMAND_ENTRY_AUTO(CAutoCAD2011App, LMGroup, LM_Toggle_Object_Move_Mode, LM_Toggle_Object_Move_Mode,
                           ACRX_CMD_MODAL, nullptr);
