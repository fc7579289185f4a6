// Points in time, for tests.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_UTC_H
#define TESTS_SUPPORT_UTC_H

#include "base/clock.h"

#include <ctime>

/// A point in time by its date and time in UTC, "YYYY-MM-DDTHH:MM".
inline std::time_t utc(const char* text)
{
    std::tm time = quelm::parseLocalTime(text);
    return timegm(&time);
}

#endif
