// The boundary's query session of a driver that is connected to no device: nothing is answered.
#include "host/device_session.h"

bool BaseBiDiSession::getRecipientData(char* /*table*/, int /*index*/, char** /*value*/) { return false; }

bool BaseBiDiSession::fetchSingleOIDResponse(char* /*oid*/, char** /*buffer*/, int /*size*/) { return false; }
