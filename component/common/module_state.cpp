// Module state that several subsystems share.
#include "common/module_state.h"

GTKObject* recipientListWidget = nullptr;
GTKObject* pbListWidget = nullptr;
GTKObject* curRecipientListWidget = nullptr;
GTKObject* groupListWidget = nullptr;
GTKObject* searchStatusWidget = nullptr;

char messageBuffer[host::textBufferSize] = {};

int currentPBType = personalPhonebook;
