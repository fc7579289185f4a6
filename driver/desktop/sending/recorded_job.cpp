// Records and replays what the component writes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/recorded_job.h"

namespace quelm {
namespace {

class Recorder final : public AbstractPDLWriter {
public:
    explicit Recorder(std::vector<std::string>& texts) : texts_(texts) {}

    bool writeText(const char* text) override
    {
        texts_.emplace_back(text == nullptr ? "" : text);
        return true;
    }
    void writeString(const std::string& text) override { texts_.push_back(text); }

private:
    std::vector<std::string>& texts_;
};

/// False as soon as the writer does not take a text.
bool replay(const std::vector<std::string>& texts, AbstractPDLWriter& writer)
{
    for (const auto& text : texts) {
        // A text with a NUL can only be handed over as a string.
        if (text.find('\0') != std::string::npos)
            writer.writeString(text);
        else if (!writer.writeText(text.c_str()))
            return false;
    }
    return true;
}

} // namespace

RecordedJob recordJob(FaxSession& session)
{
    RecordedJob job;
    job.recipients = session.recipients();
    job.texts = session.texts();
    job.coverPage = session.coverPageTemplate();
    Recorder attributes(job.attributes);
    job.attributesWritten = session.serializeJob(attributes);
    job.withCoverPage = session.coverPageChosen();
    if (job.withCoverPage) {
        Recorder coverSheet(job.coverSheet);
        job.coverSheetWritten = session.serializeCoverSheet(coverSheet);
    }
    return job;
}

void RecordedFaxSession::setPdl(Pdl) {}

bool RecordedFaxSession::coverPageChosen() { return job_.withCoverPage; }

bool RecordedFaxSession::checkInfo() { return true; }

bool RecordedFaxSession::serializeJob(AbstractPDLWriter& writer)
{
    return replay(job_.attributes, writer) && job_.attributesWritten;
}

bool RecordedFaxSession::serializeCoverSheet(AbstractPDLWriter& writer)
{
    return replay(job_.coverSheet, writer) && job_.coverSheetWritten;
}

std::size_t RecordedFaxSession::count(RecipientList list)
{
    return list == RecipientList::job ? job_.recipients.size() : 0;
}

JobRecipient RecordedFaxSession::recipient(RecipientList, std::size_t position)
{
    return job_.recipients.at(position);
}

JobTexts RecordedFaxSession::texts() { return job_.texts; }

CoverPageTemplate RecordedFaxSession::coverPageTemplate() { return job_.coverPage; }

} // namespace quelm
