// Writes lines to standard error.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/say.h"

#include "base/log.h"
#include "base/texts.h"

#include <iostream>

namespace quelm {

void say(const std::string& line)
{
    if (!isQuiet())
        sayAlways(line);
}

void sayAlways(const std::string& line) { std::cerr << messageLine(line) << std::endl; }

} // namespace quelm
