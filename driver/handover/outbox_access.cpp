// Decides whether a job needs the outbox.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/outbox_access.h"

#include "base/error.h"
#include "base/log.h"
#include "base/translation.h"

namespace quelm {

std::unique_ptr<Outbox> openOutbox(const OutboxSettings& settings)
{
    if (settings.folder.empty())
        throw Error(localized("no folder for the outbox is known; set HOME or XDG_STATE_HOME"));
    return std::make_unique<Outbox>(settings);
}

std::unique_ptr<Outbox> outboxFor(const JobTarget& target, bool waits, const OutboxSettings& settings)
{
    if (waits)
        return openOutbox(settings);
    if (std::holds_alternative<FileTarget>(target) || settings.keepDays == 0)
        return nullptr;
    try {
        return openOutbox(settings);
    } catch (const Error& error) {
        log(Severity::warning,
            // Translators: %s says why.
            localized("the fax job goes out without being kept in the outbox: %s", error.what()));
        return nullptr;
    }
}

} // namespace quelm
