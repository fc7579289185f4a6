// Calls who wants to interrupt the outbox.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/outbox_steps.h"

#include <utility>

namespace quelm {
namespace {

OutboxStepHook& hookOfProcess()
{
    static OutboxStepHook hook;
    return hook;
}

} // namespace

void setOutboxStepHook(OutboxStepHook hook) { hookOfProcess() = std::move(hook); }

void beforeOutboxStep(const char* step)
{
    if (hookOfProcess())
        hookOfProcess()(step);
}

} // namespace quelm
