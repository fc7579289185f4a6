// Checks a job, and finds what a user should know of it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/handover.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/core/driver.h"
#include "driver/handover/card_remark.h"
#include "driver/handover/job_view.h"
#include "driver/handover/recipient_check.h"
#include "driver/jobs/attribute_lines.h"
#include "driver/jobs/job_writer.h"
#include "driver/widgets/widget_names.h"
#include "driver/widgets/widget_tree.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <utility>

namespace quelm {
namespace {

void requireDialText(const std::string& text, const char* what)
{
    if (!text.empty() && !isDialText(text))
        // Translators: %s is "the dialing prefix" or "the credit card number".
        throw Error(
            localized("%s holds something else than digits, blanks, \"-\", \"*\", \"#\" and \",\"; change "
                      "it in the fax dialog",
                      translated(what)));
}

void requirePlain(const std::string& text, const char* what)
{
    if (!isPlainText(text))
        throw Error(localized("%s holds a line end or another control character; change it in the fax dialog",
                              translated(what)));
}

void requirePlainCoverTexts(const JobTexts& texts)
{
    requirePlain(texts.note, forTranslation("the note of the cover sheet"));
    requirePlain(texts.customText, forTranslation("the cover sheet's own text for its recipients"));
    for (const auto& field : senderTexts)
        requirePlain(texts.*field.inJob, field.words);
}

void requireSoundRecipients(const std::vector<JobRecipient>& recipients)
{
    for (const auto& recipient : recipients)
        if (const auto problem = problemWithRecipient(recipient))
            throw Error(*problem);
}

/// What the job holds although its box is not ticked says so: unticking takes nothing out of a job.
std::vector<std::string> remarksOn(const Driver& driver, const JobTexts& texts)
{
    const auto isTicked = [&driver](const char* box) { return driver.show(box).ticked.value_or(false); };
    std::vector<std::string> remarks;
    if (!texts.dialingPrefix.empty() && !isTicked(widget_names::lanFaxDialingPrefix))
        remarks.push_back(localized("the dialing prefix %s is dialled, though its box is not ticked any more",
                                    texts.dialingPrefix));
    if (const auto card = cardRemark(texts.creditCard); !card.empty())
        remarks.push_back(isTicked(widget_names::lanFaxCreditCard)
                              ? card
                              // Translators: %s is "the credit card ending in 1234 is charged".
                              : localized("%s, though its box is not ticked any more", card));
    return remarks;
}

/// What a field of the dialogs shows; nothing for a component that has no such field.
std::string shownIn(const WidgetTree& tree, const char* field)
{
    const Widget* widget = tree.find(field);
    return widget == nullptr ? "" : widget->text();
}

/// What the fax dialog shows of an option with a box; nothing while the box is not ticked.
std::optional<std::string> tickedText(const WidgetTree& tree, const char* box, const char* field)
{
    const Widget* widget = tree.find(box);
    return widget != nullptr && widget->flag() ? std::optional(shownIn(tree, field)) : std::nullopt;
}

bool isOn(const WidgetTree& tree, const char* box)
{
    const Widget* widget = tree.find(box);
    return widget != nullptr && widget->flag();
}

/// Whether the cover page names others than the set-up shows; "Defaults" changes the set-up alone.
bool coverShowsOtherThings(const WidgetTree& tree, const JobTexts& texts)
{
    const bool ownText = texts.showsRecipients && texts.showsCustomText;
    return isOn(tree, widget_names::showRcptInfoCheckbox) != texts.showsRecipients ||
           isOn(tree, widget_names::showSenderInfoCheckbox) != texts.showsSender ||
           (texts.showsRecipients && isOn(tree, widget_names::showCustomText) != texts.showsCustomText) ||
           (ownText && shownIn(tree, widget_names::coverSheetCustomText) != texts.customText);
}

/// The dialog keeps what it shows when it is cancelled, and the job what it held before: what goes out is
/// then not what the user sees, and the attribute lines and the pages may contradict each other.
std::vector<std::string> contradictionsOf(Driver& driver, const JobTexts& texts, bool hasCoverPage)
{
    std::vector<std::string> warnings;
    if (!driver.choicesTakenOver())
        return warnings;
    const WidgetTree& tree = driver.widgets();
    const Widget* option = tree.find(widget_names::lanFaxCoverSheetOption);
    const bool showsCoverPage = option != nullptr ? option->number() != 0 : hasCoverPage;
    if (showsCoverPage && !hasCoverPage)
        warnings.push_back(
            localized("the fax goes out without a cover page, though the fax dialog shows that "
                      "one is sent; open the dialog and press Ok to send it"));
    else if (!showsCoverPage && hasCoverPage)
        warnings.push_back(
            localized("the fax goes out with a cover page, though the fax dialog shows that none "
                      "is sent; open the dialog and press Ok to leave it out"));
    const std::string note = " (" + shownIn(tree, widget_names::lanFaxCoverSheetNotes) + ") ";
    if (option != nullptr && showsCoverPage && hasCoverPage && texts.note != note)
        warnings.push_back(
            localized("the cover page has another note than the fax dialog shows; open the dialog "
                      "and press Ok to take that one"));
    if (hasCoverPage && std::ranges::any_of(senderTexts, [&](const auto& field) {
            const Widget* widget = tree.find(field.widget);
            return widget != nullptr && widget->text() != texts.*field.inJob;
        }))
        warnings.push_back(
            localized("the cover page is made with other details of the sender than its set-up shows; "
                      "open the set-up and press Ok to take those"));
    if (hasCoverPage && driver.coverSetUpTakenOver() && coverShowsOtherThings(tree, texts))
        warnings.push_back(
            localized("the cover page shows other things than its set-up says; open the set-up and press "
                      "Ok to take those"));
    const auto prefix =
        tickedText(tree, widget_names::lanFaxDialingPrefix, widget_names::lanFaxDialingPrefixInfo);
    if (prefix && *prefix != texts.dialingPrefix)
        warnings.push_back(
            texts.dialingPrefix.empty()
                ? localized(
                      "the fax is dialled without a prefix, though the fax dialog shows \"%s\"; open the "
                      "dialog and press Ok to dial it",
                      shownText(*prefix))
                : localized(
                      "the fax is dialled with the prefix \"%s\", though the fax dialog shows \"%s\"; open "
                      "the dialog and press Ok to take that one",
                      shownText(texts.dialingPrefix), shownText(*prefix)));
    const auto card = tickedText(tree, widget_names::lanFaxCreditCard, widget_names::lanFaxCreditCardInfo);
    if (card && *card != texts.creditCard)
        warnings.push_back(
            texts.creditCard.empty()
                ? localized("no credit card is charged, though the fax dialog shows one; open the "
                            "dialog and press Ok to charge it")
                : localized("another credit card is charged than the fax dialog shows; open the "
                            "dialog and press Ok to take that one"));
    return warnings;
}

/// What the job is written with: of choices that wait to be taken over, what the dialogs show.
JobTexts textsToWrite(Driver& driver)
{
    JobTexts texts = driver.faxSession().texts();
    if (driver.choicesTakenOver())
        return texts;
    JobView view = viewOfJob(driver);
    texts.dialingPrefix = std::move(view.prefix);
    texts.creditCard = std::move(view.card);
    texts.note = std::move(view.note);
    // Another kind of text for the recipients goes out without the user's own.
    texts.customText = view.showsCustomText ? std::move(view.customText) : std::string();
    for (const auto& field : senderTexts)
        texts.*field.inJob = std::move(view.*field.inView);
    return texts;
}

} // namespace

std::vector<std::string> Handover::allWarnings() const
{
    auto all = sharedWarnings;
    std::ranges::copy(cutTexts, std::back_inserter(all));
    std::ranges::copy(warnings, std::back_inserter(all));
    return all;
}

Handover prepareHandover(Driver& driver, Written written)
{
    driver.takeOverShownChoices();
    return lookAtHandover(driver, written);
}

Handover lookAtHandover(Driver& driver, Written written)
{
    FaxSession& session = driver.faxSession();
    Handover handover;
    handover.recipients = session.recipients();
    requireSoundRecipients(handover.recipients);
    const JobTexts texts = session.texts();
    const JobTexts toWrite = textsToWrite(driver);
    requireDialText(toWrite.dialingPrefix, forTranslation("the dialing prefix"));
    requireDialText(toWrite.creditCard, forTranslation("the credit card number"));
    if (driver.coverPageWillGo())
        requirePlainCoverTexts(toWrite);
    if (session.coverPageChosen() && written == Written::job && !handover.recipients.empty())
        handover.cutTexts = coverPageOf(session).cut;
    handover.shared = sharedNumbers(handover.recipients);
    handover.sharedWarnings = sharedNumberWarnings(handover.recipients, handover.shared);
    handover.warnings = contradictionsOf(driver, texts, session.coverPageChosen());
    std::ranges::copy(trunkZeroWarnings(handover.recipients), std::back_inserter(handover.warnings));
    handover.remarks = remarksOn(driver, texts);
    return handover;
}

std::string behindSummary(const std::vector<std::string>& remarks)
{
    std::string text;
    for (const auto& remark : remarks)
        text += "; " + remark;
    return text;
}

} // namespace quelm
