// What will happen when a job is sent, summed up before it is.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_HANDOVER_SUMMARY_H
#define DRIVER_HANDOVER_SUMMARY_H

#include "driver/documents/document.h"
#include "driver/handover/handover.h"
#include "driver/jobs/job_target.h"

#include <cstddef>
#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace quelm {

/// Where a job goes, and when.
struct JobPlan {
    std::optional<JobTarget> target;   ///< nothing: no destination was named yet
    std::optional<std::time_t> sendAt; ///< nothing: at once
    bool toOutbox = false;             ///< it is put into the outbox, whenever it goes out
    bool isTimeChosen = false;         ///< told to go out at once also without a destination
    bool leavesKeptCard = false; ///< the dialog keeps a card that is charged only when the command says so
};

/// A job as it would go out now.
struct JobSummary {
    std::vector<JobRecipient> recipients;
    std::string document;             ///< its name; empty for none
    std::optional<std::size_t> pages; ///< of the document; nothing for no document, or one that does not say
    bool hasCoverPage = false;        ///< one page more
    std::string note;                 ///< on the cover page, as it was typed; empty for none
    std::string resolution;           ///< "standard", "fine", "superfine"
    std::string speed;                ///< "4800", "14.4", "super-g3"
    bool hasConfirmation = false;     ///< the device prints a confirmation sheet
    std::string dialingPrefix;        ///< empty for none
    std::string card; ///< the card's last four digits; "..." for one of less than eight; empty for none
    std::vector<std::string> charges; ///< a sentence each about the prefix and the card
    JobPlan plan;
    /// A sentence for each thing that the user entered and that does not reach the device, or not as it was
    /// entered.
    std::vector<std::string> notReaching;
};

/// Sums up the driver's job, as `handover` found it. Changes nothing. A job that has no document, recipients
/// or destination yet, or whose dialogs nobody confirmed, is summed up as far as it goes.
[[nodiscard]] JobSummary summaryOf(Driver& driver, const Handover& handover, const Document* document,
                                   const JobPlan& plan);

/// The destination for people: "device fax.example:9100", "queue fax", a file's path.
[[nodiscard]] std::string shownTarget(const JobTarget& target);

/// The summary for people, a line for each subject: the first names and how many recipients, pages, quality,
/// prefix and card, destination and time, what does not reach the device. What is not known yet has no line.
/// `now` is the current time.
[[nodiscard]] std::vector<std::string> summaryLines(const JobSummary& summary, std::time_t now);

} // namespace quelm

#endif
