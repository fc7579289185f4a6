// The boundary's facts about the installation, the user and the language.
#include "host/driver_info.h"

#include "base/translation.h"
#include "driver/boundary/host_state.h"

namespace {

// Never null, also before there is a driver.
char nothing[] = "";

char* fact(std::string quelm::HostState::*member)
{
    quelm::HostState* state = quelm::HostState::current();
    return state == nullptr ? nothing : (state->*member).data();
}

} // namespace

char* GlobalDriverInfo::getExecutableLocation() { return fact(&quelm::HostState::home); }

char* GlobalDriverInfo::getCurrentUserName() { return fact(&quelm::HostState::user); }

bool GlobalDriverInfo::translateMessage(char* text, char* out) { return quelm::translate(text, out); }
