// What host/driver_info.h declares: the installation, the user, the language and the clock.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/driver_info.h"

#include "base/clock.h"
#include "base/translation.h"
#include "driver/boundary/host_state.h"

#include <ctime>

namespace {

// Never null, also before there is a driver.
char nothing[] = "";

char* fact(std::string quelm::HostState::*member)
{
    quelm::HostState* state = quelm::HostState::current();
    return state == nullptr ? nothing : (state->*member).data();
}

} // namespace

GlobalDriverInfo* pDriverGlobals = nullptr;

char* GlobalDriverInfo::getExecutableLocation() { return fact(&quelm::HostState::location); }

char* GlobalDriverInfo::getCurrentUserName() { return fact(&quelm::HostState::user); }

bool GlobalDriverInfo::translateMessage(char* text, char* out) { return quelm::translate(text, out); }

void GetCurrentTimeWithFormat(char* out, int outSize, char* format, int flag)
{
    if (out == nullptr || outSize <= 0)
        return;
    quelm::HostState* state = quelm::HostState::current();
    const bool keepsReading = state != nullptr && state->lastReading && flag != 1;
    const std::tm reading = keepsReading ? *state->lastReading : quelm::localTime();
    if (state != nullptr)
        state->lastReading = reading;
    // strftime leaves the buffer undefined when the text does not fit, and for the empty text.
    if (format == nullptr || std::strftime(out, static_cast<std::size_t>(outSize), format, &reading) == 0)
        *out = '\0';
}
