// Asks who lives, and words it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/outbox_sender.h"

#include "base/error.h"
#include "base/process.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/outbox/outbox_worker.h"

#include <unistd.h>

#include <chrono>
#include <utility>
#include <vector>

namespace quelm {
namespace {

/// Whether a program of the system said yes in time; where it is not installed, it did not.
bool answers(std::vector<std::string> arguments, const std::string& expected)
{
    constexpr std::chrono::seconds longest{2};
    ProcessRequest request;
    request.arguments = std::move(arguments);
    request.timeLimit = longest;
    try {
        const auto result = runProcess(request);
        return result.exitStatus == 0 && trimmed(result.output) == expected;
    } catch (const Error&) {
        return false;
    }
}

} // namespace

OutboxSender senderOf(const OutboxSettings& settings)
{
    // A timer goes on where a desktop that is closed leaves off.
    if (const auto timer = timerSender(); timer != OutboxSender::nobody)
        return timer;
    if (const auto worker = OutboxWorker::living(settings))
        return worker->kind == WorkerKind::desktop ? OutboxSender::desktop : OutboxSender::command;
    return OutboxSender::nobody;
}

OutboxSender timerSender()
{
    if (!answers({"systemctl", "--user", "is-active", "quelm-outbox.timer"}, "active"))
        return OutboxSender::nobody;
    const bool lingers =
        answers({"loginctl", "show-user", std::to_string(::getuid()), "--property=Linger"}, "Linger=yes");
    return lingers ? OutboxSender::lingeringTimer : OutboxSender::timer;
}

std::string senderSentence(OutboxSender sender)
{
    switch (sender) {
    case OutboxSender::desktop:
        return localized("the open desktop sends it; if you close it or log out before, the job waits until "
                         "the desktop is opened again");
    case OutboxSender::command:
        return localized("the running \"quelm-driver outbox run\" sends it; if that is ended or you log out "
                         "before, the job waits until it is started again");
    case OutboxSender::timer:
        return localized("the timer quelm-outbox.timer sends it while you are logged in; after you log out, "
                         "the job waits until you are back, unless you run \"loginctl enable-linger\"");
    case OutboxSender::lingeringTimer:
        return localized("the timer quelm-outbox.timer sends it, also when you are logged out");
    case OutboxSender::nobody:
        break;
    }
    return localized("no program is there that sends it: open the desktop, run \"quelm-driver outbox run "
                     "--wait\", or run \"systemctl --user enable --now quelm-outbox.timer\" once");
}

} // namespace quelm
