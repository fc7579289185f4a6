// Gives jobs to threads.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/calls/job_claims.h"

namespace quelm::device {

bool JobClaims::take(int job)
{
    const std::lock_guard lock(mutex_);
    const auto found =
        claims_.try_emplace(job, Claim{.isTaken = false, .restsUntil = {}, .rest = Rest(rest_)});
    Claim& claim = found.first->second;
    if (claim.isTaken || claim.restsUntil > std::chrono::steady_clock::now())
        return false;
    claim.isTaken = true;
    return true;
}

void JobClaims::finish(int job)
{
    const std::lock_guard lock(mutex_);
    claims_.erase(job);
}

void JobClaims::postpone(int job)
{
    const std::lock_guard lock(mutex_);
    Claim& claim = claims_.at(job);
    claim.isTaken = false;
    claim.restsUntil = std::chrono::steady_clock::now() + claim.rest.next();
}

std::optional<SteadyMoment> JobClaims::nextEnd() const
{
    const std::lock_guard lock(mutex_);
    std::optional<SteadyMoment> next;
    for (const auto& [job, claim] : claims_)
        if (!claim.isTaken)
            next = next ? std::min(*next, claim.restsUntil) : claim.restsUntil;
    return next;
}

} // namespace quelm::device
