// Reads widgets, and the job where a dialog is open.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/job_view.h"

#include "driver/core/driver.h"
#include "driver/widgets/widget_names.h"
#include "driver/widgets/widget_tree.h"

#include <optional>
#include <string>

namespace quelm {
namespace {

std::optional<WidgetView> viewOf(Driver& driver, const char* name)
{
    const Widget* widget = driver.widgets().find(name);
    return widget != nullptr ? std::optional(quelm::viewOf(*widget)) : std::nullopt;
}

std::string textOf(Driver& driver, const char* name)
{
    const auto view = viewOf(driver, name);
    return view ? view->text.value_or("") : "";
}

bool isTicked(Driver& driver, const char* name)
{
    const auto view = viewOf(driver, name);
    return view && view->ticked.value_or(false);
}

bool isOpen(Driver& driver, const char* window)
{
    const auto view = viewOf(driver, window);
    return view && view->visible;
}

void takeSender(Driver& driver, const JobTexts& texts, JobView& view)
{
    const bool held = driver.senderTakenOver() || isOpen(driver, widget_names::senderInformationWindow);
    for (const auto& field : senderTexts)
        view.*field.inView = held ? texts.*field.inJob : textOf(driver, field.widget);
}

void takeCover(Driver& driver, const JobTexts& texts, JobView& view)
{
    view.note = textOf(driver, widget_names::lanFaxCoverSheetNotes);
    view.isA4 = choiceOf(driver, widget_names::coverSheetSize) == 1;
    // "Defaults" changes what the set-up shows, and not the job.
    if (driver.coverSetUpTakenOver() || isOpen(driver, widget_names::coverSheetSetupWindow)) {
        view.showsRecipients = texts.showsRecipients;
        view.showsCustomText = texts.showsCustomText;
        view.showsSender = texts.showsSender;
        view.customText = texts.customText;
        return;
    }
    view.showsRecipients = isTicked(driver, widget_names::showRcptInfoCheckbox);
    view.showsCustomText = isTicked(driver, widget_names::showCustomText);
    view.showsSender = isTicked(driver, widget_names::showSenderInfoCheckbox);
    view.customText = textOf(driver, widget_names::coverSheetCustomText);
}

} // namespace

JobView viewOfJob(Driver& driver)
{
    const JobTexts texts = driver.faxSession().texts();
    JobView view;
    view.coverGoes = driver.coverPageWillGo();
    takeCover(driver, texts, view);
    takeSender(driver, texts, view);
    view.prefix = driver.dialingPrefixToUse();
    view.typedPrefix = textOf(driver, widget_names::lanFaxDialingPrefixInfo);
    view.prefixTicked = isTicked(driver, widget_names::lanFaxDialingPrefix);
    view.card = driver.creditCardToCharge();
    view.typedCard = textOf(driver, widget_names::lanFaxCreditCardInfo);
    view.cardTicked = isTicked(driver, widget_names::lanFaxCreditCard);
    return view;
}

int choiceOf(Driver& driver, const char* widget)
{
    const auto view = viewOf(driver, widget);
    return view ? view->value.value_or(-1) : -1;
}

} // namespace quelm
