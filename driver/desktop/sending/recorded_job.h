// What the component writes for a job, recorded so that the job can be written on another thread.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_SENDING_RECORDED_JOB_H
#define DRIVER_DESKTOP_SENDING_RECORDED_JOB_H

#include "driver/plugin/fax_session.h"

#include <cstddef>
#include <string>
#include <vector>

namespace quelm {

/// One job's attribute lines and cover page: the texts that the component wrote, one by one, and what they
/// are compared with.
struct RecordedJob {
    std::vector<std::string> attributes;
    std::vector<std::string> coverSheet;
    bool withCoverPage = false;
    bool attributesWritten = false; ///< what the component answered
    bool coverSheetWritten = false;
    std::vector<JobRecipient> recipients;
    JobTexts texts;
    CoverPageTemplate coverPage;

    bool operator==(const RecordedJob&) const = default;
};

/// Has the component write the job, which has recipients and whose form was set.
[[nodiscard]] RecordedJob recordJob(FaxSession& session);

/// Writes a recorded job as the component did. May be used on any thread.
class RecordedFaxSession final : public FaxSession {
public:
    /// `job` outlives the session.
    explicit RecordedFaxSession(const RecordedJob& job) : job_(job) {}

    void setPdl(Pdl pdl) override;
    bool coverPageChosen() override;
    bool checkInfo() override;
    bool serializeJob(AbstractPDLWriter& writer) override;
    bool serializeCoverSheet(AbstractPDLWriter& writer) override;
    std::size_t count(RecipientList list) override;
    JobRecipient recipient(RecipientList list, std::size_t position) override;
    JobTexts texts() override;
    CoverPageTemplate coverPageTemplate() override;

private:
    const RecordedJob& job_;
};

} // namespace quelm

#endif
