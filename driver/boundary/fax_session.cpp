// What host/fax_session.h declares: the place for the component's fax job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/fax_session.h"

Tarvik40Fax* pFaxSession = nullptr;
