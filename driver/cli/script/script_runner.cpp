// The steps of a script as user actions and looks at the screen.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/script/script_runner.h"

#include "base/error.h"
#include "base/log.h"
#include "base/translation.h"
#include "driver/cli/job/cover_picture.h"
#include "driver/cli/job/write_document.h"
#include "driver/cli/script/script_answers.h"
#include "driver/core/driver.h"
#include "driver/core/user_actions.h"
#include "driver/handover/handover.h"
#include "driver/handover/warnings.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace quelm {

std::string ScriptRunner::run(const ScriptStep& step)
{
    switch (step.verb) {
    case ScriptVerb::show:
        return widgetAnswer(driver_.show(step.target));
    case ScriptVerb::rows:
        return rowsAnswer(step.target, driver_.rows(step.target));
    case ScriptVerb::windows: {
        std::vector<WidgetView> views;
        std::ranges::transform(driver_.windows(), std::back_inserter(views),
                               [this](const auto& window) { return driver_.show(window); });
        return windowsAnswer(views);
    }
    default:
        break;
    }
    const int failedBefore = driver_.failedCallbacks();
    receipt_.clear();
    act(step);
    if (driver_.failedCallbacks() != failedBefore)
        throw Error(localized("the component failed in its callback; see the line ahead of this one"));
    logWarnings(watch_.newProblems());
    const auto question = driver_.pendingQuestion();
    return "ok\n" + receipt_ + (question ? questionAnswer(*question) : std::string());
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
    driver_.requireKnownOptions();
    logWarnings(prepareHandover(driver_).allWarnings());
    writeCoverPicture(driver_.faxSession(), step.target);
}

void ScriptRunner::fax(const ScriptStep& step)
{
    JobTarget target = FileTarget{step.text};
    if (step.place == ScriptPlace::device)
        target = parseNetworkAddress(step.text);
    else if (step.place == ScriptPlace::queue)
        target = QueueTarget{step.text};
    const auto tell = [&](const Receipt& receipt) {
        if (const auto* device = std::get_if<NetworkAddress>(&target))
            receipt_ = deviceAnswer(*device);
        else if (step.place == ScriptPlace::queue)
            receipt_ = queueAnswer(step.text, receipt.job);
    };
    driver_.actions().requireNoQuestion();
    driver_.requireKnownOptions();
    const Handover handover = prepareHandover(driver_);
    logWarnings(handover.allWarnings());
    for (const auto& remark : handover.remarks)
        writeUnderProgramName(remark);
    writeDocument(driver_.faxSession(), pdl_, openDocument(step.target), target, driver_.user(), tell);
}

} // namespace quelm
