// Records and replays what the component writes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/recorded_job.h"

#include "base/error.h"
#include "base/translation.h"
#include "driver/desktop/sending/process_copy.h"

#include <charconv>
#include <utility>

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

void pack(std::string& text, unsigned long number) { text += std::to_string(number) + ' '; }

void pack(std::string& text, const std::vector<std::string>& texts)
{
    pack(text, texts.size());
    for (const auto& part : texts) {
        pack(text, part.size());
        text += part;
    }
}

/// Takes a packed job apart from its front.
class Unpacker {
public:
    explicit Unpacker(std::string_view text) : left_(text) {}

    unsigned long number()
    {
        unsigned long value = 0;
        const auto result = std::from_chars(left_.data(), left_.data() + left_.size(), value);
        const auto length = static_cast<std::size_t>(result.ptr - left_.data());
        if (result.ec != std::errc() || length == left_.size() || left_[length] != ' ')
            fail();
        left_.remove_prefix(length + 1);
        return value;
    }

    std::vector<std::string> texts()
    {
        std::vector<std::string> texts;
        for (auto count = number(); count > 0; --count) {
            const auto size = number();
            if (size > left_.size())
                fail();
            texts.emplace_back(left_.substr(0, size));
            left_.remove_prefix(size);
        }
        return texts;
    }

    void end() const
    {
        if (!left_.empty())
            fail();
    }

private:
    [[noreturn]] static void fail()
    {
        throw Error(localized("the job cannot be put together: %s", localized("its record is damaged")));
    }

    std::string_view left_;
};

} // namespace

RecordedJob recordJob(FaxSession& session)
{
    RecordedJob job;
    Recorder attributes(job.attributes);
    job.attributesWritten = session.serializeJob(attributes);
    job.withCoverPage = session.coverPageChosen();
    if (job.withCoverPage) {
        Recorder coverSheet(job.coverSheet);
        job.coverSheetWritten = session.serializeCoverSheet(coverSheet);
    }
    return job;
}

RecordedJob recordJobApart(FaxSession& session)
{
    return unpacked(inProcessCopy([&session] { return packed(recordJob(session)); }));
}

std::string packed(const RecordedJob& job)
{
    std::string text;
    pack(text, job.attributes);
    pack(text, job.coverSheet);
    for (const bool flag : {job.withCoverPage, job.attributesWritten, job.coverSheetWritten})
        pack(text, flag ? 1 : 0);
    pack(text, job.recipients);
    return text;
}

RecordedJob unpacked(std::string_view text)
{
    Unpacker from(text);
    RecordedJob job;
    job.attributes = from.texts();
    job.coverSheet = from.texts();
    for (bool* flag : {&job.withCoverPage, &job.attributesWritten, &job.coverSheetWritten})
        *flag = from.number() != 0;
    job.recipients = from.number();
    from.end();
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

} // namespace quelm
