// Module state that several subsystems share.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "common/module_state.h"

GTKObject* recipientListWidget = nullptr;
GTKObject* pbListWidget = nullptr;
GTKObject* curRecipientListWidget = nullptr;
GTKObject* groupListWidget = nullptr;
GTKObject* searchStatusWidget = nullptr;

char messageBuffer[host::textBufferSize] = {};

int currentPBType = personalPhonebook;
