// Words why the outbox cannot be used.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/outbox_failure.h"

#include "base/texts.h"
#include "base/translation.h"

namespace quelm {

void failOutbox(const std::string& path, const std::string& reason)
{
    // Translators: a file or folder, and why.
    throw Error(localized("the outbox cannot be used: %s: %s", oneLine(path), reason));
}

std::string stateClause(OutboxState state)
{
    switch (state) {
    case OutboxState::waiting:
        return localized("it waits");
    case OutboxState::handingOver:
        return localized("it was being handed over when its program ended, and nobody has looked since what "
                         "became of it");
    case OutboxState::handedOver:
        return localized("it was handed over already");
    case OutboxState::uncertain:
        return localized("its destination may have it");
    case OutboxState::failed:
        return localized("it failed");
    case OutboxState::cancelled:
        break;
    }
    return localized("it was cancelled");
}

} // namespace quelm
