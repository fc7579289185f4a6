// Checks a job, and finds what a user should know of it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/handover.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/core/driver.h"
#include "driver/handover/card_remark.h"
#include "driver/handover/recipient_check.h"
#include "driver/jobs/attribute_lines.h"
#include "driver/jobs/job_writer.h"
#include "driver/widgets/widget_names.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace quelm {
namespace {

constexpr std::array<std::pair<std::string JobTexts::*, const char*>, 7> coverTexts{{
    {&JobTexts::note, forTranslation("the note of the cover sheet")},
    {&JobTexts::customText, forTranslation("the cover sheet's own text for its recipients")},
    {&JobTexts::senderName, forTranslation("the sender's name")},
    {&JobTexts::senderNumber, forTranslation("the sender's fax number")},
    {&JobTexts::senderOrganization, forTranslation("the sender's organization")},
    {&JobTexts::senderPhone, forTranslation("the sender's phone number")},
    {&JobTexts::senderEmail, forTranslation("the sender's e-mail address")},
}};

void requireDialText(const std::string& text, const char* what)
{
    if (!text.empty() && !isDialText(text))
        // Translators: %s is "the dialing prefix" or "the credit card number".
        throw Error(
            localized("%s holds something else than digits, blanks, \"-\", \"*\", \"#\" and \",\"; change "
                      "it in the fax dialog",
                      translated(what)));
}

void requirePlainCoverTexts(const JobTexts& texts)
{
    for (const auto& [text, what] : coverTexts)
        if (!isPlainText(texts.*text))
            throw Error(
                localized("%s holds a line end or another control character; change it in the fax dialog",
                          translated(what)));
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
    FaxSession& session = driver.faxSession();
    Handover handover;
    handover.recipients = session.recipients();
    requireSoundRecipients(handover.recipients);
    const JobTexts texts = session.texts();
    requireDialText(texts.dialingPrefix, forTranslation("the dialing prefix"));
    requireDialText(texts.creditCard, forTranslation("the credit card number"));
    if (session.coverPageChosen()) {
        requirePlainCoverTexts(texts);
        if (written == Written::job && !handover.recipients.empty())
            handover.cutTexts = coverPageOf(session).cut;
    }
    handover.shared = sharedNumbers(handover.recipients);
    handover.sharedWarnings = sharedNumberWarnings(handover.recipients, handover.shared);
    handover.warnings = trunkZeroWarnings(handover.recipients);
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
