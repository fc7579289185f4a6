// What the component writes for a job, recorded so that the job can be written on another thread.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_SENDING_RECORDED_JOB_H
#define DRIVER_DESKTOP_SENDING_RECORDED_JOB_H

#include "driver/plugin/fax_session.h"

#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// One job's attribute lines and cover page: the texts that the component wrote, one by one.
struct RecordedJob {
    std::vector<std::string> attributes;
    std::vector<std::string> coverSheet;
    bool withCoverPage = false;
    bool attributesWritten = false; ///< what the component answered
    bool coverSheetWritten = false;
    unsigned long recipients = 0; ///< how many there are; the caller's to fill

    bool operator==(const RecordedJob&) const = default;
};

/// Has the component write the job, which has recipients and whose form was set.
[[nodiscard]] RecordedJob recordJob(FaxSession& session);

/// The same in a copy of the process, which leaves the component as it is: each time that a cover sheet
/// is written, the component appends the recipients' names to those that it wrote the time before. So
/// the preview, and a job that is sent again, show them once. Throws quelm::Error when that fails.
[[nodiscard]] RecordedJob recordJobApart(FaxSession& session);

/// A recorded job as one text, and back. The latter throws quelm::Error for any other text.
std::string packed(const RecordedJob& job);
RecordedJob unpacked(std::string_view text);

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

private:
    const RecordedJob& job_;
};

} // namespace quelm

#endif
