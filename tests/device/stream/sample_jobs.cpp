// Jobs as docs/print-stream.md has them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/device/stream/sample_jobs.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace quelm::device {
namespace {

Lines::iterator lineThatHolds(Lines& lines, std::string_view part)
{
    const auto holds = [&](const std::string& line) { return line.find(part) != std::string::npos; };
    const auto found = std::ranges::find_if(lines, holds);
    if (found == lines.end() || std::ranges::count_if(lines, holds) != 1)
        throw std::logic_error("not one line holds " + std::string(part));
    return found;
}

Lines attributes(const std::string& prefix)
{
    return {prefix + "OID_ATT_FAX_COVER_SHEET TRUE;\r\n",
            prefix + "OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n",
            prefix + "OID_ATT_FAX_CONFIRMATION_SHEET TRUE;\r\n",
            prefix + "OID_ATT_FAX_RESOLUTION 1;\r\n",
            prefix + "OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_14400;\r\n",
            prefix + "OID_ATT_FAX_DESTINATION_PHONE \"5550104477\";\r\n",
            prefix + "OID_ATT_FAX_DESTINATION_PHONE \"9,+5550108812\";\r\n",
            prefix + "OID_ATT_FAX_MAILBOX \"12a#\";\r\n"};
}

std::string remarksText(const std::vector<Remark>& remarks)
{
    std::string text;
    for (const auto& remark : remarks)
        text += std::to_string(remark.line) + ": " + remark.text + "\n";
    return text;
}

} // namespace

Lines dscJob()
{
    Lines lines{"%!PS-Adobe-3.0\n", "%%Title: (letter.ps)\n", "%%Creator: a host\n", "%%LanguageLevel: 2\n"};
    for (const auto& line : attributes("%%"))
        lines.push_back(line);
    for (const auto* line :
         {"%%QLMbegin\r\n", "%%OID_ATT_CREDIT_CARD \"4000 1234\";\r\n", "%%QLMend\r\n", "%%EndComments\n",
          "%!PS\n", "/Helvetica findfont 12 scalefont setfont 72 700 moveto (Hello) show showpage\n",
          "%%Trailer\n", "%%EOF\n"})
        lines.emplace_back(line);
    return lines;
}

Lines pjlJob()
{
    Lines lines{std::string(uel) + "@PJL JOB NAME=\"letter.ps\"\r\n"};
    for (const auto& line : attributes("@PJL COMMENT "))
        lines.push_back(line);
    for (const auto* line :
         {"@PJL COMMENT OID_ATT_CREDIT_CARD \"4000 1234\";\r\n", "@PJL ENTER LANGUAGE=POSTSCRIPT\r\n",
          "%!PS-Adobe-3.0\n", "%%Title: (letter.ps)\n", "%%EndComments\n", "72 700 moveto showpage\n",
          "%%Trailer\n", "%%EOF\n"})
        lines.emplace_back(line);
    lines.push_back(std::string(uel) + "@PJL EOJ NAME=\"letter.ps\"\r\n");
    lines.emplace_back(uel);
    return lines;
}

std::string joined(const Lines& lines)
{
    std::string all;
    for (const auto& line : lines)
        all += line;
    return all;
}

Lines replaced(Lines lines, std::string_view part, const std::string& line)
{
    *lineThatHolds(lines, part) = line;
    return lines;
}

Lines inserted(Lines lines, std::string_view part, const std::string& line)
{
    lines.insert(lineThatHolds(lines, part), line);
    return lines;
}

ReceivedJob readJob(std::string_view bytes, std::size_t size)
{
    JobReader reader;
    while (!bytes.empty() && !reader.isComplete()) {
        const auto piece = bytes.substr(0, size);
        const auto taken = reader.take(piece);
        bytes.remove_prefix(taken);
        if (taken < piece.size() && !reader.isComplete())
            throw std::logic_error("bytes were left that belong to the job");
    }
    return reader.finish();
}

std::string refusalsOf(const ReceivedJob& job) { return remarksText(job.refusals); }

std::string objectionsOf(const ReceivedJob& job) { return remarksText(job.objections); }

std::string described(const ReceivedJob& job)
{
    std::ostringstream text;
    text << "form " << static_cast<int>(job.form) << ", title " << job.title << ", fax " << job.isFax
         << ", cover " << job.coverSheet << ", confirmation " << job.confirmationSheet << ", resolution "
         << static_cast<int>(job.resolution) << ", speed " << static_cast<int>(job.speed) << ", card "
         << job.creditCard << ", bytes " << job.size << " (" << job.postScriptBegin << " to "
         << job.postScriptEnd << ")\n";
    for (const auto& destination : job.destinations)
        text << destination.line << ": " << destination.number << " mailbox " << destination.mailbox << "\n";
    text << "refusals\n" << refusalsOf(job) << "objections\n" << objectionsOf(job);
    return text.str();
}

} // namespace quelm::device
