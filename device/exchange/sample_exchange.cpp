// Writes the sample of an exchange's file.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/atomic_file.h"
#include "device/exchange/exchange.h"

namespace quelm::device {
namespace {

// What the lines without "#" say is what holds without a file.
constexpr const char* sample =
    R"(# What stands behind which telephone number. Lines that begin with "#" are comments.

[exchange]
# The keys for an outside line, which a caller presses ahead of the number and a pause; "none" for none.
outside-line = 9
# Whether a caller with a credit card is asked for it.
cards = yes
# What answers at numbers that no group below speaks of: fax, busy, no-answer or voice.
others = fax
# The station identity of fax machines that have none of their own; without it they say their number.
#identity = +1 555 010 0000

# A group for each number, or for several: "?" stands for any one digit, "*" at the end for any others. A number
# without "*" goes ahead of one with it, then the one with the most digits, then the one that stands first.

# The first call of each recipient finds it busy; "always": every call.
#[number 5550100001]
#busy = 1

# It rings and rings. "busy" and "voice", a person, may stand there, too.
#[number 5550100002]
#answer = no-answer

# A slow machine; any other has 14400.
#[number 5550100003]
#speed = 4800
#error-correction = no
#identity = +1 555 010 0003

# A bad line: the signal is so many dB above the noise, 0 to 100. Error correction mends 20, at 18 and less the
# call is slower, and at 14 and less it fails.
#[number 5550100004]
#noise = 20

#[number 5550100005]
#hangs-up-after-page = 2

#[number 555010001?]
#paper-for-pages = 1
)";

} // namespace

bool writeSampleExchange(const std::filesystem::path& file)
{
    AtomicFile written(file);
    written.restrictToOwner();
    written.write(sample);
    return written.commitNew();
}

} // namespace quelm::device
