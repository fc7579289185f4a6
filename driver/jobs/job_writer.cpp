// Writes a fax job: attribute lines, cover page and document as one print stream.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/job_writer.h"

#include "base/error.h"
#include "base/translation.h"
#include "driver/documents/print_wrapping.h"
#include "driver/jobs/job_texts.h"
#include "driver/jobs/pdl_writers.h"

#include <array>
#include <cstdint>

namespace quelm {
namespace {

/// Lets pass what the component writes, unless it holds a UEL: the component puts the user's texts into
/// the stream as they stand, and the device would end the job there.
class ComponentSink final : public JobSink {
public:
    explicit ComponentSink(JobSink& sink) : sink_(sink) {}

    void write(std::string_view bytes) override
    {
        if (searchUel_(bytes))
            throw Error(localized(
                "the fax cannot be written: a text of its recipients, sender or cover sheet holds a command "
                "that ends a print job (UEL); take it out"));
        sink_.write(bytes);
    }

private:
    JobSink& sink_;
    UelSearch searchUel_;
};

class JobWriter {
public:
    JobWriter(FaxSession& session, const Document& document, JobSink& sink, const JobFacts& facts)
        : session_(session), document_(document), sink_(sink), facts_(facts),
          title_(facts.title.empty() ? document.name() : facts.title)
    {
    }

    void writeDsc()
    {
        beginHeader();
        writeAttributeLines("\n");
        endHeader();
        writePages();
    }

    void writePjl()
    {
        // Every PJL line carries a command: Ghostscript, given such a job as a file, reads a lone "@PJL"
        // and the line behind it as one.
        const std::string name = " NAME=\"" + pjlText(title_) + "\"\r\n";
        put(uel);
        put("@PJL JOB" + name);
        writeAttributeLines("\r\n");
        put("@PJL ENTER LANGUAGE=POSTSCRIPT\r\n");
        beginHeader();
        endHeader();
        writePages();
        put(uel);
        put("@PJL EOJ" + name);
        put(uel);
    }

private:
    void put(std::string_view text) { sink_.write(text); }

    void beginHeader()
    {
        std::array<char, 32> date{};
        std::strftime(date.data(), date.size(), "%Y-%m-%d %H:%M", &facts_.now);
        put("%!PS-Adobe-3.0\n");
        put(dscComment("%%Title:", title_));
        put(dscComment("%%Creator:", facts_.creator));
        put(dscComment("%%CreationDate:", date.data()));
        put("%%LanguageLevel: 2\n");
    }

    void endHeader() { put("%%EndComments\n"); }

    void writeAttributeLines(std::string_view lineEnd)
    {
        ComponentSink checked(sink_);
        SinkPdlWriter writer(checked);
        const bool written = session_.serializeJob(writer);
        writer.rethrowFailure();
        if (!written || writer.size() == 0)
            throw Error(localized("the fax cannot be written: the component wrote no fax attributes"));
        if (writer.endsInsideLine())
            put(lineEnd);
    }

    void writePages()
    {
        const bool cover = session_.coverPageChosen();
        if (cover)
            writeCoverPage();
        put(cover ? "%%Page: Document 2\n" : "%%Page: Document 1\n");
        if (document_.isEncapsulated())
            put(countPages);
        put(dscComment("%%BeginDocument:", document_.name()));
        const DocumentEnd end = copyDocument(document_, sink_, facts_.progress);
        put(end.insideLine ? "\n" : "");
        for (unsigned open = end.openDocuments; open > 0; --open)
            put("%%EndDocument\n");
        put("%%EndDocument\n");
        if (document_.isEncapsulated())
            put(showPageUnlessCounted);
        put("%%Trailer\n%%EOF\n");
    }

    void writeCoverPage()
    {
        ComponentSink checked(sink_);
        SinkPdlWriter writer(checked);
        const bool written = session_.serializeCoverSheet(writer);
        writer.rethrowFailure();
        if (!written || writer.size() == 0)
            throw Error(localized("the fax cannot be written: the component did not write its cover page"));
        if (writer.endsInsideLine())
            put("\n");
    }

    // A figure may leave it to the page that embeds it to put the page out, and then nothing would be faxed.
    // Whether it did is kept in a string, because `restore` leaves the content of strings alone.
    static constexpr std::string_view countPages =
        "userdict /QuelmPageShown 1 string put\n"
        "userdict /showpage { userdict /QuelmPageShown get 0 1 put systemdict /showpage get exec } put\n";
    static constexpr std::string_view showPageUnlessCounted =
        "userdict /QuelmPageShown get 0 get 0 eq { systemdict /showpage get exec } if\n";

    FaxSession& session_;
    const Document& document_;
    JobSink& sink_;
    const JobFacts& facts_;
    std::string title_;
};

/// Makes the session ready to be written.
void prepare(FaxSession& session, Pdl pdl)
{
    session.setPdl(pdl);
    if (!session.checkInfo())
        throw Error(localized("the fax has no recipients: add at least one"));
}

} // namespace

void writeFaxJob(FaxSession& session, const Document& document, Pdl pdl, JobSink& sink, const JobFacts& facts)
{
    prepare(session, pdl);
    JobWriter writer(session, document, sink, facts);
    if (pdl == Pdl::dsc)
        writer.writeDsc();
    else
        writer.writePjl();
}

void writeAttributes(FaxSession& session, Pdl pdl, GuardedPdlWriter& writer)
{
    prepare(session, pdl);
    const bool written = session.serializeJob(writer);
    writer.rethrowFailure();
    if (!written || writer.size() == 0)
        throw Error(localized("the component wrote no fax attributes"));
}

} // namespace quelm
