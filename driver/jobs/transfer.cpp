// What a front end and a job on its way over a wire tell each other.
#include "driver/jobs/transfer.h"

#include "base/translation.h"

namespace quelm {

void Transfer::report(std::uint64_t done, std::uint64_t total) const
{
    if (progress)
        progress(done, total);
}

std::string durationText(std::chrono::milliseconds duration)
{
    constexpr auto second = std::chrono::milliseconds(std::chrono::seconds(1)).count();
    const auto count = duration.count();
    return count % second == 0 ? localized("%d s", count / second) : localized("%d ms", count);
}

} // namespace quelm
