// The command `attributes`: the component's job attributes, byte for byte and write for write.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/json_answer.h"
#include "base/error.h"
#include "base/translation.h"
#include "driver/cli/commands.h"
#include "driver/cli/filled_job.h"
#include "driver/cli/job/job_json.h"
#include "driver/jobs/job_writer.h"
#include "driver/jobs/output.h"
#include "driver/jobs/pdl_writers.h"

#include <unistd.h>

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {
namespace {

/// Collects what the component writes.
class TextWriter final : public GuardedPdlWriter {
public:
    /// The lines so far.
    [[nodiscard]] std::vector<std::string> lines() const
    {
        std::vector<std::string> lines;
        std::istringstream text(text_);
        for (std::string line; std::getline(text, line);) {
            if (line.ends_with('\r'))
                line.pop_back();
            lines.push_back(line);
        }
        return lines;
    }

private:
    void take(std::string_view text) override { text_ += text; }

    std::string text_;
};

void writeToFile(FilledJob& job, const std::string& output)
{
    const auto destination = openOutput(output);
    SinkPdlWriter writer(destination->sink());
    writeAttributes(job.session(), job.pdl(), writer, [&destination] { destination->restrictToOwner(); });
    destination->deliver();
}

void write(FilledJob& job, const std::string& output)
{
    if (output != "-")
        return writeToFile(job, output);
    DescriptorPdlWriter writer(STDOUT_FILENO, localized("standard output"));
    writeAttributes(job.session(), job.pdl(), writer);
}

/// The lines as data; where a file was named it gets them, too.
void answerInJson(FilledJob& job, const std::string& output)
{
    TextWriter writer;
    writeAttributes(job.session(), job.pdl(), writer);
    AttributeAnswer answer{writer.lines(), {}, job.handover().recipients, job.handover().allWarnings()};
    if (output == "-")
        return writeJsonAnswer(attributesJson(answer));
    writeToFile(job, output);
    answer.file = output;
    writeJsonResult(attributesJson(answer));
}

} // namespace

void runAttributesCommand(const CommandLine& line)
{
    if (line.job.device || line.job.queue || line.job.destination)
        throw UsageError(
            localized("attributes are no job that a device or queue could take; write them with --output"));
    FilledJob job(line);
    if (line.json)
        answerInJson(job, line.job.output.value_or("-"));
    else
        write(job, line.job.output.value_or("-"));
    job.tellKeptCard();
}

} // namespace quelm
