// Writes a fax job: attribute lines, cover page and document as one print stream.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/job_writer.h"

#include "base/error.h"
#include "base/translation.h"
#include "driver/cover/cover_page.h"
#include "driver/documents/print_wrapping.h"
#include "driver/jobs/attribute_lines.h"
#include "driver/jobs/job_texts.h"
#include "driver/jobs/pdl_writers.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace quelm {
namespace {

/// Collects what the component writes, text by text.
class CollectingPdlWriter final : public GuardedPdlWriter {
public:
    const std::vector<std::string>& texts() const { return texts_; }
    std::string whole() const
    {
        std::string all;
        for (const auto& text : texts_)
            all += text;
        return all;
    }

private:
    void take(std::string_view text) override { texts_.emplace_back(text); }

    std::vector<std::string> texts_;
};

/// Refuses a text of the component's that holds a UEL: the device would end the job there.
void refuseUel(std::string_view text)
{
    UelSearch holdsUel;
    if (holdsUel(text))
        throw Error(localized(
            "the fax cannot be written: a text of its recipients, sender or cover sheet holds a command "
            "that ends a print job (UEL); take it out"));
}

/// The attribute lines of the job, text by text, seen to be the job's; `failure` is the line for none.
std::vector<std::string> attributeLines(FaxSession& session, Pdl pdl, const std::string& failure)
{
    CollectingPdlWriter writer;
    const bool written = session.serializeJob(writer);
    writer.rethrowFailure();
    if (!written || writer.size() == 0)
        throw Error(failure);
    const std::string lines = writer.whole();
    refuseUel(lines);
    const JobTexts texts = session.texts();
    checkAttributeLines(lines, {pdl, texts.dialingPrefix, texts.creditCard, session.recipients()});
    return writer.texts();
}

/// Calls the function when one of the texts holds the number of a credit card.
void announceCreditCard(const std::vector<std::string>& lines, const std::function<void()>& beforeCreditCard)
{
    if (beforeCreditCard && std::ranges::any_of(lines, holdCreditCard))
        beforeCreditCard();
}

class JobWriter {
public:
    /// `document` is null for a cover page alone.
    JobWriter(const Document* document, JobSink& sink, const JobFacts& facts)
        : document_(document), sink_(sink), facts_(facts), title_(facts.title)
    {
        if (title_.empty())
            title_ = document != nullptr ? document->name() : "Cover page";
    }

    void writeDsc(FaxSession& session)
    {
        const auto lines = attributeLinesOf(session, Pdl::dsc);
        beginHeader();
        putAll(lines);
        endHeader();
        writePages(&session);
    }

    void writePjl(FaxSession& session)
    {
        const auto lines = attributeLinesOf(session, Pdl::pjl);
        // Every PJL line carries a command: Ghostscript, given such a job as a file, reads a lone "@PJL"
        // and the line behind it as one.
        const std::string name = " NAME=\"" + pjlText(title_) + "\"\r\n";
        put(uel);
        put("@PJL JOB" + name);
        putAll(lines);
        put("@PJL ENTER LANGUAGE=POSTSCRIPT\r\n");
        beginHeader();
        endHeader();
        writePages(&session);
        put(uel);
        put("@PJL EOJ" + name);
        put(uel);
    }

    void writeDocument()
    {
        beginHeader();
        endHeader();
        writePages(nullptr);
    }

    void writeCoverPageAlone(FaxSession& session)
    {
        beginHeader();
        endHeader();
        put(coverPageOf(session).postScript);
        put(trailer);
    }

private:
    std::vector<std::string> attributeLinesOf(FaxSession& session, Pdl pdl) const
    {
        auto lines = attributeLines(
            session, pdl, localized("the fax cannot be written: the component wrote no fax attributes"));
        announceCreditCard(lines, facts_.beforeCreditCard);
        return lines;
    }

    void putAll(const std::vector<std::string>& texts)
    {
        for (const auto& text : texts)
            put(text);
    }

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

    /// `session` is that of the fax whose cover page goes ahead; null for none.
    void writePages(FaxSession* session)
    {
        const bool cover = session != nullptr && session->coverPageChosen();
        if (cover)
            put(coverPageOf(*session).postScript);
        put(cover ? "%%Page: Document 2\n" : "%%Page: Document 1\n");
        if (document_->isEncapsulated())
            put(countPages);
        put(dscComment("%%BeginDocument:", document_->name()));
        const DocumentEnd end = copyDocument(*document_, sink_, facts_.progress);
        put(end.insideLine ? "\n" : "");
        for (unsigned open = end.openDocuments; open > 0; --open)
            put("%%EndDocument\n");
        put("%%EndDocument\n");
        if (document_->isEncapsulated())
            put(showPageUnlessCounted);
        put(trailer);
    }

    // A figure may leave it to the page that embeds it to put the page out, and then nothing would be faxed.
    // Whether it did is kept in a string, because `restore` leaves the content of strings alone.
    static constexpr std::string_view countPages =
        "userdict /QuelmPageShown 1 string put\n"
        "userdict /showpage { userdict /QuelmPageShown get 0 1 put systemdict /showpage get exec } put\n";
    static constexpr std::string_view showPageUnlessCounted =
        "userdict /QuelmPageShown get 0 get 0 eq { systemdict /showpage get exec } if\n";
    static constexpr std::string_view trailer = "%%Trailer\n%%EOF\n";

    const Document* document_;
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

CoverPage coverPageOf(FaxSession& session)
{
    CollectingPdlWriter writer;
    const bool written = session.serializeCoverSheet(writer);
    writer.rethrowFailure();
    if (!written || writer.size() == 0)
        throw Error(localized("the fax cannot be written: the component did not write its cover page"));
    const std::string page = writer.whole();
    refuseUel(page);
    return makeCoverPage(page, session.coverPageTemplate());
}

void writeFaxJob(FaxSession& session, const Document& document, Pdl pdl, JobSink& sink, const JobFacts& facts)
{
    prepare(session, pdl);
    JobWriter writer(&document, sink, facts);
    if (pdl == Pdl::dsc)
        writer.writeDsc(session);
    else
        writer.writePjl(session);
}

void writeAttributes(FaxSession& session, Pdl pdl, GuardedPdlWriter& writer,
                     const std::function<void()>& beforeCreditCard)
{
    prepare(session, pdl);
    const auto lines = attributeLines(session, pdl, localized("the component wrote no fax attributes"));
    announceCreditCard(lines, beforeCreditCard);
    for (const auto& text : lines)
        writer.writeString(text);
    writer.rethrowFailure();
}

void writeDocumentAlone(const Document& document, JobSink& sink, const JobFacts& facts)
{
    JobWriter(&document, sink, facts).writeDocument();
}

void writeCoverPageAlone(FaxSession& session, JobSink& sink, const JobFacts& facts)
{
    prepare(session, Pdl::dsc);
    if (!session.coverPageChosen())
        throw Error(localized("the fax has no cover sheet: choose one in the fax dialog"));
    JobWriter(nullptr, sink, facts).writeCoverPageAlone(session);
}

} // namespace quelm
