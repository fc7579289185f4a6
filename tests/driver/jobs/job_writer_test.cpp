// Tests of what a fax job's print stream consists of.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/job_writer.h"

#include "tests/driver/jobs/job_support.h"

namespace quelm::tests {
namespace {

class JobWriterTest : public JobTest {
protected:
    Document letter() const { return Document::open(file("letter.ps", "%!PS\nshowpage\n")); }

    std::string failure(Pdl pdl = Pdl::dsc)
    {
        const Document document = letter();
        return errorLine([&] { writtenJob(session, document, pdl); });
    }

    FakeFaxSession session;
};

constexpr const char* header = "%!PS-Adobe-3.0\n"
                               "%%Title: (A letter)\n"
                               "%%Creator: (quelm-driver)\n"
                               "%%CreationDate: (2024-03-05 14:07)\n"
                               "%%LanguageLevel: 2\n";

constexpr const char* embeddedLetter = "%%BeginDocument: (letter.ps)\n"
                                       "%!PS\nshowpage\n"
                                       "%%EndDocument\n"
                                       "%%Trailer\n%%EOF\n";

TEST_F(JobWriterTest, ADscJobCarriesTheAttributeLinesInItsHeader)
{
    EXPECT_EQ(writtenJob(session, letter(), Pdl::dsc), header + FakeFaxSession::attributeLines(Pdl::dsc) +
                                                           "%%EndComments\n%%Page: Document 1\n" +
                                                           embeddedLetter);
}

TEST_F(JobWriterTest, APjlJobCarriesTheAttributeLinesAheadOfThePostScript)
{
    EXPECT_EQ(writtenJob(session, letter(), Pdl::pjl),
              "\x1b%-12345X@PJL JOB NAME=\"A letter\"\r\n" + FakeFaxSession::attributeLines(Pdl::pjl) +
                  "@PJL ENTER LANGUAGE=POSTSCRIPT\r\n" + header + "%%EndComments\n%%Page: Document 1\n" +
                  embeddedLetter + "\x1b%-12345X@PJL EOJ NAME=\"A letter\"\r\n\x1b%-12345X");
}

TEST_F(JobWriterTest, TheCoverPageStandsAheadOfTheDocument)
{
    session.cover = true;
    for (const Pdl pdl : {Pdl::dsc, Pdl::pjl}) {
        const std::string pages =
            "%%EndComments\n" + FakeFaxSession::coverPage() + "%%Page: Document 2\n" + embeddedLetter;
        EXPECT_NE(writtenJob(session, letter(), pdl).find(pages), std::string::npos);
    }
}

TEST_F(JobWriterTest, TheComponentIsAskedInTheOrderOfPrinting)
{
    session.cover = true;
    writtenJob(session, letter(), Pdl::pjl);
    EXPECT_EQ(session.calls, (std::vector<std::string>{"setPdl pjl", "checkInfo", "serializeJob",
                                                       "coverPageChosen", "serializeCoverSheet"}));
}

TEST_F(JobWriterTest, WithoutACoverPageTheComponentIsNotAskedForOne)
{
    writtenJob(session, letter(), Pdl::dsc);
    EXPECT_EQ(session.calls,
              (std::vector<std::string>{"setPdl dsc", "checkInfo", "serializeJob", "coverPageChosen"}));
}

TEST_F(JobWriterTest, AJobWithoutRecipientsIsRefusedBeforeAnythingIsWritten)
{
    session.hasRecipients = false;
    StringSink sink;
    const Document document = letter();
    EXPECT_EQ(errorLine([&] { writeFaxJob(session, document, Pdl::dsc, sink, someFacts()); }),
              "the fax has no recipients: add at least one");
    EXPECT_EQ(sink.text, "");
}

TEST_F(JobWriterTest, AComponentThatWritesNothingFailsTheJob)
{
    session.writesAttributes = false;
    EXPECT_EQ(failure(), "the fax cannot be written: the component wrote no fax attributes");
    session.writesAttributes = true;
    session.cover = true;
    session.writesCoverPage = false;
    EXPECT_EQ(failure(), "the fax cannot be written: the component did not write its cover page");
}

TEST_F(JobWriterTest, AUelInATextOfTheUserFailsTheJob)
{
    session.mailbox = "\x1b%-12345X";
    EXPECT_EQ(failure(Pdl::pjl),
              "the fax cannot be written: a text of its recipients, sender or cover sheet holds a "
              "command that ends a print job (UEL); take it out");
}

TEST_F(JobWriterTest, ALineOfAttributesThatDoesNotBelongThereFailsTheJob)
{
    session.mailbox = "1\"";
    EXPECT_EQ(failure(), "the fax cannot be written: its attributes hold a line that does not belong there: "
                         "\"%%OID_ATT_FAX_MAILBOX \"1\"\";\"");
}

TEST_F(JobWriterTest, AnotherNumberOfDestinationsThanRecipientsFailsTheJob)
{
    session.recipientCount = 2;
    EXPECT_EQ(failure(), "the fax cannot be written: it has 2 recipients, and the component wrote another "
                         "number of destinations");
    session.recipientCount = 0;
    EXPECT_NE(failure(Pdl::pjl), "");
}

TEST_F(JobWriterTest, ALineOfTheCoverPageThatDoesNotBelongThereFailsTheJob)
{
    session.cover = true;
    session.coverName = "Ann\n%%EOF";
    EXPECT_NE(failure().find("\"Ann \""), std::string::npos) << failure();
    session.coverName = "Ann";
    session.behindCoverPage = "@PJL RESET\n";
    EXPECT_EQ(failure(), "the fax cannot be written: its cover page holds a line that does not belong there: "
                         "\"@PJL RESET\"");
    session.cover = false;
    EXPECT_EQ(failure(), "");
}

TEST_F(JobWriterTest, ACreditCardIsAnnouncedAheadOfAllBytes)
{
    StringSink sink;
    int announced = 0;
    JobFacts facts = someFacts();
    facts.beforeCreditCard = [&] {
        ++announced;
        EXPECT_EQ(sink.text, "");
    };
    const Document document = letter();
    for (const Pdl pdl : {Pdl::dsc, Pdl::pjl}) {
        sink.text.clear();
        writeFaxJob(session, document, pdl, sink, facts);
        sink.text.clear();
        SinkPdlWriter writer(sink);
        writeAttributes(session, pdl, writer, facts.beforeCreditCard);
    }
    EXPECT_EQ(announced, 4);
    session.creditCard.clear();
    writeFaxJob(session, document, Pdl::dsc, sink, facts);
    EXPECT_EQ(announced, 4);
}

TEST_F(JobWriterTest, ADocumentAloneHasItsPagesAndNoFax)
{
    StringSink sink;
    writeDocumentAlone(letter(), sink, someFacts());
    EXPECT_EQ(sink.text, header + std::string("%%EndComments\n%%Page: Document 1\n") + embeddedLetter);
}

class CoverPageAlone : public JobWriterTest {
protected:
    CoverPageAlone() { session.cover = true; }

    std::string written(const JobFacts& facts = someFacts())
    {
        StringSink sink;
        writeCoverPageAlone(session, sink, facts);
        return sink.text;
    }
    std::string refusal()
    {
        StringSink sink;
        const auto line = errorLine([&] { writeCoverPageAlone(session, sink, someFacts()); });
        EXPECT_EQ(sink.text.find("showpage"), std::string::npos);
        return line;
    }
};

TEST_F(CoverPageAlone, IsTheJobsPageBetweenItsHeaderAndTrailerWithoutAttributes)
{
    const std::string job = writtenJob(session, letter(), Pdl::dsc);
    const auto start = job.find("%%EndComments\n");
    const auto end = job.find("%%Page: Document 2\n");
    ASSERT_NE(end, std::string::npos);
    session.calls.clear();
    EXPECT_EQ(written(), header + job.substr(start, end - start) + "%%Trailer\n%%EOF\n");
    EXPECT_EQ(session.calls, (std::vector<std::string>{"setPdl dsc", "checkInfo", "coverPageChosen",
                                                       "serializeCoverSheet"}));
    JobFacts facts = someFacts();
    facts.title.clear();
    EXPECT_NE(written(facts).find("%%Title: (Cover page)\n"), std::string::npos);
}

TEST_F(CoverPageAlone, IsOnePageForGhostscript)
{
    const Rendering rendering = render(file("cover.ps", written()));
    EXPECT_EQ(rendering.exitStatus, 0);
    EXPECT_EQ(rendering.messages, "");
    EXPECT_EQ(rendering.pages, std::vector<std::string>{"Fax Cover Sheet"});
}

TEST_F(CoverPageAlone, IsTheSameAgainAndChangesNothingOfTheJob)
{
    const std::string job = writtenJob(session, letter(), Pdl::pjl);
    const std::string first = written();
    EXPECT_EQ(written(), first);
    EXPECT_EQ(writtenJob(session, letter(), Pdl::pjl), job);
}

TEST_F(CoverPageAlone, ACreditCardIsNotInItAndNotAnnounced)
{
    JobFacts facts = someFacts();
    facts.beforeCreditCard = [] { ADD_FAILURE() << "announced"; };
    EXPECT_EQ(written(facts).find(session.creditCard), std::string::npos);
    EXPECT_NE(writtenJob(session, letter(), Pdl::dsc).find(session.creditCard), std::string::npos);
}

TEST_F(CoverPageAlone, AJobWithoutOneOrWithoutRecipientsIsRefusedBeforeAnythingIsWritten)
{
    StringSink sink;
    session.cover = false;
    EXPECT_EQ(errorLine([&] { writeCoverPageAlone(session, sink, someFacts()); }),
              "the fax has no cover sheet: choose one in the fax dialog");
    session.cover = true;
    session.hasRecipients = false;
    EXPECT_EQ(errorLine([&] { writeCoverPageAlone(session, sink, someFacts()); }),
              "the fax has no recipients: add at least one");
    EXPECT_EQ(sink.text, "");
}

TEST_F(CoverPageAlone, FailsWhereTheJobWould)
{
    session.writesCoverPage = false;
    EXPECT_EQ(refusal(), "the fax cannot be written: the component did not write its cover page");
    session.writesCoverPage = true;
    session.behindCoverPage = "@PJL RESET\n";
    EXPECT_EQ(refusal(), failure());
    EXPECT_NE(refusal(), "");
    session.behindCoverPage.clear();
    session.coverName = "\x1b%-12345X";
    EXPECT_EQ(refusal(), failure());
    EXPECT_NE(refusal(), "");
}

TEST_F(CoverPageAlone, AWriteThatFailsAnywhereFailsItWithItsOwnLine)
{
    const std::size_t size = written().size();
    for (std::size_t room = 0; room < size; ++room) {
        FailingSink sink(room);
        ASSERT_EQ(errorLine([&] { writeCoverPageAlone(session, sink, someFacts()); }), "the paper ran out")
            << room;
    }
    FailingSink enough(size);
    EXPECT_NO_THROW(writeCoverPageAlone(session, enough, someFacts()));
}

TEST_F(JobWriterTest, TheAttributesAloneAreRefusedBeforeAnythingIsWritten)
{
    StringSink sink;
    SinkPdlWriter writer(sink);
    session.mailbox = "\";\r\n%%OID_ATT_FAX_DESTINATION_PHONE \"0900";
    EXPECT_NE(errorLine([&] { writeAttributes(session, Pdl::dsc, writer); }), "");
    EXPECT_EQ(sink.text, "");
}

TEST_F(JobWriterTest, AWriteThatFailsAnywhereFailsTheJobWithItsOwnLine)
{
    session.cover = true;
    const Document document = letter();
    const std::size_t size = writtenJob(session, document, Pdl::pjl).size();
    for (std::size_t room = 0; room < size; ++room) {
        FailingSink sink(room);
        ASSERT_EQ(errorLine([&] { writeFaxJob(session, document, Pdl::pjl, sink, someFacts()); }),
                  "the paper ran out")
            << room;
    }
    FailingSink enough(size);
    EXPECT_NO_THROW(writeFaxJob(session, document, Pdl::pjl, enough, someFacts()));
}

TEST_F(JobWriterTest, WithoutATitleTheDocumentsNameStands)
{
    JobFacts facts = someFacts();
    facts.title = "";
    const std::string job = writtenJob(session, letter(), Pdl::pjl, facts);
    EXPECT_NE(job.find("@PJL JOB NAME=\"letter.ps\"\r\n"), std::string::npos);
    EXPECT_NE(job.find("%%Title: (letter.ps)\n"), std::string::npos);
}

TEST_F(JobWriterTest, ATitleCannotAddLinesToTheJob)
{
    JobFacts facts = someFacts();
    facts.title = "x\"\r\n@PJL COMMENT OID_ATT_FAX_DESTINATION_PHONE \"0900\";\r\n%%OID_ATT_X;";
    facts.creator = "y)\n%%OID_ATT_Y;";
    const Document document = Document::open(file("a\n%%QLMbegin.ps", "%!PS\nshowpage\n"));
    const std::string job = writtenJob(session, document, Pdl::pjl, facts);
    EXPECT_EQ(job.find("\n@PJL COMMENT OID_ATT_FAX_DESTINATION_PHONE \"0900\""), std::string::npos);
    EXPECT_EQ(job.find("\n%%OID_ATT"), std::string::npos);
    EXPECT_EQ(job.find("\n%%QLM"), std::string::npos);
    EXPECT_NE(job.find("%%Title: (x\"\\015\\012@PJL"), std::string::npos);
}

TEST_F(JobWriterTest, DocumentsLeftOpenInTheDocumentAreEnded)
{
    const Document document = Document::open(file("a.ps", "%!PS\n%%BeginDocument: x\nshowpage"));
    const std::string job = writtenJob(session, document, Pdl::dsc);
    EXPECT_TRUE(job.ends_with("showpage\n%%EndDocument\n%%EndDocument\n%%Trailer\n%%EOF\n")) << job;
}

TEST_F(JobWriterTest, OnlyTheComponentsAttributeLinesAreInTheJob)
{
    const Document document =
        Document::open(file("a.ps", "%!PS\n" + FakeFaxSession::attributeLines(Pdl::dsc) +
                                        FakeFaxSession::attributeLines(Pdl::pjl) + "showpage\n"));
    const std::string job = writtenJob(session, document, Pdl::dsc);
    const std::string lines = FakeFaxSession::attributeLines(Pdl::dsc);
    const auto first = job.find(lines);
    ASSERT_NE(first, std::string::npos);
    const std::string rest = job.substr(first + lines.size());
    EXPECT_EQ(rest.find("%%OID_ATT_"), std::string::npos);
    EXPECT_EQ(rest.find("%%QLM"), std::string::npos);
    EXPECT_EQ(rest.find("@PJL"), std::string::npos);
}

TEST_F(JobWriterTest, TheAttributesAloneAreWhatTheComponentWrites)
{
    for (const Pdl pdl : {Pdl::dsc, Pdl::pjl}) {
        StringSink sink;
        SinkPdlWriter writer(sink);
        writeAttributes(session, pdl, writer);
        EXPECT_EQ(sink.text, FakeFaxSession::attributeLines(pdl));
    }
    EXPECT_EQ(session.calls, (std::vector<std::string>{"setPdl dsc", "checkInfo", "serializeJob",
                                                       "setPdl pjl", "checkInfo", "serializeJob"}));
}

TEST_F(JobWriterTest, TheAttributesAloneFailAsTheJobDoes)
{
    FailingSink full(100);
    SinkPdlWriter fullWriter(full);
    EXPECT_EQ(errorLine([&] { writeAttributes(session, Pdl::dsc, fullWriter); }), "the paper ran out");

    StringSink sink;
    SinkPdlWriter writer(sink);
    session.writesAttributes = false;
    EXPECT_EQ(errorLine([&] { writeAttributes(session, Pdl::dsc, writer); }),
              "the component wrote no fax attributes");
    session.hasRecipients = false;
    EXPECT_EQ(errorLine([&] { writeAttributes(session, Pdl::dsc, writer); }),
              "the fax has no recipients: add at least one");
    EXPECT_EQ(sink.text, "");
}

} // namespace
} // namespace quelm::tests
