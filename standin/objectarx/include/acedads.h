/// The host's C interface: system variables, selection sets, redraw. Main thread only.
#ifndef STANDIN_ACEDADS_H
#define STANDIN_ACEDADS_H

#include "standin_objectarx_api.h"

#include "adscodes.h"
#include "adsdef.h"

extern "C" {
/// RTNORM, or RTERROR with the buffer untouched. Names are case-insensitive.
STANDIN_OBJECTARX_API int acedGetVar(const ACHAR* name, resbuf* result);
/// Mode L"I": the entities that are pre-selected; RTERROR when there are none. The set must be freed.
STANDIN_OBJECTARX_API int acedSSGet(const ACHAR* mode, const void* pt1, const void* pt2, const resbuf* filter,
                                    ads_name ss);
STANDIN_OBJECTARX_API int acedSSLength(const ads_name ss, AdInt32* length);
/// Entity number `i` of the set, from 0.
STANDIN_OBJECTARX_API int acedSSName(const ads_name ss, AdInt32 i, ads_name entity);
STANDIN_OBJECTARX_API int acedSSFree(const ads_name ss);
/// Mode 1 draws the entity.
STANDIN_OBJECTARX_API int acedRedraw(const ads_name entity, int mode);
}

#endif
