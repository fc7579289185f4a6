// The smallest host: the boundary's variables, and none of its functions.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/device_session.h"
#include "host/director.h"
#include "host/driver_info.h"
#include "host/fax_session.h"
#include "host/texts.h"

namespace {
char emptyString[] = "";
}

ComponentDirector* pDriverDirector = nullptr;
GlobalDriverInfo* pDriverGlobals = nullptr;
Tarvik40Fax* pFaxSession = nullptr;
BaseBiDiSession* pBiDi = nullptr;
char* pEmptyString = emptyString;
