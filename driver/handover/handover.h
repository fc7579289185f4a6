// What every front end looks at before a fax job goes out.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_HANDOVER_HANDOVER_H
#define DRIVER_HANDOVER_HANDOVER_H

#include "driver/handover/duplicates.h"
#include "driver/plugin/fax_session.h"

#include <string>
#include <vector>

namespace quelm {

class Driver;

/// What was found about a job that can be written as it stands now.
struct Handover {
    std::vector<JobRecipient> recipients;
    std::vector<SharedNumber> shared;        ///< those that one fax would reach twice
    std::vector<std::string> sharedWarnings; ///< a sentence for each of them
    std::vector<std::string> cutTexts; ///< a sentence for each text that the cover sheet has no room for
    std::vector<std::string> warnings; ///< sentences about other things
    std::vector<std::string> remarks;  ///< what the line about the finished job says besides

    /// All of the warnings.
    [[nodiscard]] std::vector<std::string> allWarnings() const;
};

/// What is about to be written.
enum class Written {
    job,        ///< the job, or its cover page
    attributes, ///< its attribute lines alone; whether the cover page prints does not matter
};

/// Has the component take over what its dialogs show, as far as nobody confirmed them since the start, and
/// looks at the driver's job as it would be written now. Throws quelm::Error, naming the first that is wrong,
/// when a recipient cannot be faxed to, the dialing prefix, the credit card or a text of the cover sheet
/// holds what must not get into a job, or the cover sheet cannot be printed; the job must not be written
/// then. Changes nothing else, and writes nothing. That the job has recipients at all is for the writer to
/// ask.
[[nodiscard]] Handover prepareHandover(Driver& driver, Written written = Written::job);

/// The same, and nothing is taken over: what waits for that is refused ahead of it. For those who only look.
[[nodiscard]] Handover lookAtHandover(Driver& driver, Written written = Written::job);

/// "; ..." for each of the remarks.
[[nodiscard]] std::string behindSummary(const std::vector<std::string>& remarks);

} // namespace quelm

#endif
