// Keeps the summary in step with the fax, the document, the destination and the time.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/main_window/summary_panel.h"

#include "base/clock.h"
#include "base/error.h"
#include "base/translation.h"
#include "driver/desktop/toolkit/accessible.h"
#include "driver/desktop/toolkit/shown_text.h"
#include "driver/handover/send_time.h"
#include "driver/handover/summary.h"
#include "driver/handover/warnings.h"

#include <glibmm/main.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace quelm {
namespace {

constexpr int leastHeight = 54;
constexpr int mostHeight = 200;
/// A chosen time that passes means another day; nobody reads the window to the second.
constexpr unsigned clockInterval = 5; // seconds
constexpr std::size_t mostWarnings = 5;

} // namespace

SummaryPanel::SummaryPanel(Driver& driver, DestinationPanel& destination)
    : driver_(driver), destination_(destination)
{
    set_policy(Gtk::POLICY_NEVER, Gtk::POLICY_AUTOMATIC);
    set_min_content_height(leastHeight);
    set_max_content_height(mostHeight);
    set_propagate_natural_height();
    set_overlay_scrolling(false); // that it goes on is to be seen
    text_.set_xalign(0);
    text_.set_yalign(0);
    text_.set_line_wrap();
    text_.set_line_wrap_mode(Pango::WRAP_WORD_CHAR);
    text_.set_max_width_chars(1); // as wide as there is room, whatever it says
    add(text_);
    describe(text_, "Main Job Summary");
    describe(*this, "Main Job Summary Area", translated("Summary"));
    destination.signalChoiceChanged().connect([this] {
        if (!update_.connected())
            update_ = Glib::signal_idle().connect([this] {
                update();
                return false;
            });
    });
    clock_ = Glib::signal_timeout().connect_seconds(
        [this] {
            update();
            return true;
        },
        clockInterval);
    lookAtFax();
}

SummaryPanel::~SummaryPanel()
{
    clock_.disconnect();
    update_.disconnect();
}

void SummaryPanel::setDocument(std::shared_ptr<const LoadedDocument> document)
{
    document_ = std::move(document);
    update();
}

void SummaryPanel::lookAtFax()
{
    if (!driver_.windows().empty())
        return;
    handover_ = {};
    refusal_.clear();
    // Nothing is taken over from the dialogs for it: what they show when the job is sent is what counts.
    try {
        handover_ = lookAtHandover(driver_);
    } catch (const Error& error) {
        refusal_ = error.what();
        handover_.recipients = driver_.faxSession().recipients();
    }
    update();
}

void SummaryPanel::update()
{
    // Half of what is typed there would be mixed with the rest of the fax as it was.
    if (!driver_.windows().empty() && !text_.get_text().empty())
        return;
    std::string text;
    for (const auto& line : lines())
        text += (text.empty() ? "" : "\n") + shownMessage(line);
    if (text_.get_text().raw() != text)
        text_.set_text(text);
}

std::vector<std::string> SummaryPanel::lines() const
{
    std::vector<std::string> lines;
    if (!refusal_.empty())
        lines.push_back(refusal_);
    for (const auto& warnings : {driver_.unknownOptions(), handover_.warnings})
        std::ranges::copy(bounded(warnings, mostWarnings), std::back_inserter(lines));
    if (!document_)
        lines.push_back(translated("Open the document that is to be faxed."));
    if (handover_.recipients.empty())
        lines.push_back(translated("Add a recipient in the fax setup."));
    JobPlan plan;
    if (const auto missing = troubleWith(destination_.choice()); missing.empty())
        plan.target = targetOf(destination_.absoluteChoice());
    else
        lines.push_back(missing);
    const std::time_t now = currentTime();
    plan.sendAt = chosenMoment(driver_, now);
    const auto summary = summaryOf(driver_, handover_, document_ ? &document_->document : nullptr, plan);
    for (auto& line : summaryLines(summary, now))
        lines.push_back(std::move(line));
    return lines;
}

} // namespace quelm
