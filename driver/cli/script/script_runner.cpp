// The steps of a script as user actions and looks at the screen.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/script/script_runner.h"

#include "base/clock.h"
#include "base/error.h"
#include "base/log.h"
#include "base/translation.h"
#include "driver/cli/job/cover_picture.h"
#include "driver/cli/job/say.h"
#include "driver/cli/job/write_document.h"
#include "driver/core/driver.h"
#include "driver/core/user_actions.h"
#include "driver/handover/handover.h"
#include "driver/handover/held_options.h"
#include "driver/handover/send_time.h"
#include "driver/handover/summary.h"
#include "driver/handover/warnings.h"
#include "driver/outbox/outbox_sender.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <vector>

namespace quelm {
namespace {

/// Where the job of a step goes; nothing when the step leaves it open.
std::optional<JobTarget> targetOf(const ScriptStep& step)
{
    switch (step.place) {
    case ScriptPlace::file:
        return FileTarget{step.text};
    case ScriptPlace::device:
        return parseNetworkAddress(step.text);
    case ScriptPlace::queue:
        return QueueTarget{step.text};
    case ScriptPlace::none:
        break;
    }
    return std::nullopt;
}

} // namespace

ScriptAnswer ScriptRunner::run(const ScriptStep& step)
{
    answer_ = {};
    answer_.line = step.line;
    switch (step.verb) {
    case ScriptVerb::show:
        answer_.widget = driver_.show(step.target);
        return answer_;
    case ScriptVerb::rows:
        answer_.rows = driver_.rows(step.target);
        answer_.list = step.target;
        return answer_;
    case ScriptVerb::windows: {
        std::vector<WidgetView> views;
        std::ranges::transform(driver_.windows(), std::back_inserter(views),
                               [this](const auto& window) { return driver_.show(window); });
        answer_.windows = views;
        return answer_;
    }
    default:
        break;
    }
    const int failedBefore = driver_.failedCallbacks();
    act(step);
    if (driver_.failedCallbacks() != failedBefore)
        throw Error(localized("the component failed in its callback; see the line ahead of this one"));
    logWarnings(watch_.newProblems());
    answer_.question = driver_.pendingQuestion();
    return answer_;
}

void ScriptRunner::act(const ScriptStep& step)
{
    switch (step.verb) {
    case ScriptVerb::press:
        return driver_.press(step.target);
    case ScriptVerb::type:
        return driver_.type(step.target, step.text);
    case ScriptVerb::tick:
        return driver_.tick(step.target, step.on);
    case ScriptVerb::choose:
        return driver_.choose(step.target, step.numbers.front());
    case ScriptVerb::select:
        return driver_.select(step.target, step.numbers);
    case ScriptVerb::close:
        return driver_.closeWindow(step.target);
    case ScriptVerb::answer:
        return driver_.answer(step.on);
    case ScriptVerb::call:
        return driver_.call(step.target);
    case ScriptVerb::cover:
        return cover(step);
    case ScriptVerb::summary:
        return summary(step);
    case ScriptVerb::fax:
        return fax(step);
    case ScriptVerb::show:
    case ScriptVerb::rows:
    case ScriptVerb::windows:
        break; // `run` answers these.
    }
}

void ScriptRunner::cover(const ScriptStep& step)
{
    driver_.actions().requireNoQuestion();
    if (leadToOneFile(step.target, "-"))
        throw Error(localized("a script's answers stand on standard output; name a file for the picture"));
    checkedHandover();
    writeCoverPicture(driver_.faxSession(), step.target);
}

Submission ScriptRunner::submissionTo(const JobTarget& target, std::time_t begun)
{
    Submission submission;
    submission.target = target;
    submission.user = driver_.user();
    submission.pdl = pdl_;
    submission.sendAt = stillAhead(chosenMoment(driver_, begun), currentTime());
    submission.options = heldOptions(driver_);
    return submission;
}

Handover ScriptRunner::checkedHandover()
{
    driver_.actions().requireNoQuestion();
    driver_.requireKnownOptions();
    Handover handover = prepareHandover(driver_);
    logWarnings(handover.allWarnings());
    return handover;
}

void ScriptRunner::summary(const ScriptStep& step)
{
    const auto begun = currentTime();
    const Handover handover = checkedHandover();
    const Document document = openDocument(step.target);
    tryDocument(driver_.faxSession(), document, pdl_);
    const auto target = targetOf(step);
    const Submission submission = submissionTo(target.value_or(FileTarget{}), begun);
    answer_.summary = summaryOf(driver_, handover, &document, {target, submission.sendAt, false});
}

void ScriptRunner::fax(const ScriptStep& step)
{
    // Opening the document may take a while.
    const auto begun = currentTime();
    const Handover handover = checkedHandover();
    const Document document = openDocument(step.target);
    const Submission submission = submissionTo(targetOf(step).value(), begun);
    if (step.place == ScriptPlace::file && !waits(submission)) {
        for (const auto& remark : handover.remarks)
            writeRemark(remark);
    } else if (!handover.recipients.empty()) { // a job for nobody is refused
        const JobPlan plan{submission.target, submission.sendAt, false};
        for (const auto& line : summaryLines(summaryOf(driver_, handover, &document, plan), currentTime()))
            say(line);
    }
    const auto tell = [&](const SubmissionEnd& end) {
        if (end.kind == SubmissionEnd::Kind::waiting) {
            answer_.receipt = {ScriptReceipt::Kind::waits, submission.target, end.number, end.due};
            // The form of the answers has no room for it.
            say(senderSentence(senderOf(outbox_)));
        } else if (end.kind == SubmissionEnd::Kind::held) {
            answer_.receipt = {ScriptReceipt::Kind::held, submission.target, end.receipt.job, end.due};
        } else if (step.place != ScriptPlace::file) {
            answer_.receipt = {ScriptReceipt::Kind::handed, submission.target, end.receipt.job, 0};
        }
    };
    writeDocument(driver_.faxSession(), document, submission, outbox_, tell);
}

} // namespace quelm
