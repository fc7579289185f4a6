// The forms of jobs: DSC, PJL, neither, both.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/stream/job_reader.h"
#include "tests/device/stream/sample_jobs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quelm::device {
namespace {

using testing::HasSubstr;

std::string pjlRefusals(std::string_view part, const std::string& line)
{
    return refusalsOf(readJob(joined(replaced(pjlJob(), part, line))));
}

TEST(JobReaderForms, ReadsTheSampleInPjlForm)
{
    const auto job = readJob(joined(pjlJob()));
    EXPECT_EQ(refusalsOf(job), "");
    EXPECT_EQ(objectionsOf(job), "");
    EXPECT_TRUE(job.isFax);
    EXPECT_EQ(job.form, JobForm::pjl);
    EXPECT_EQ(job.title, "letter.ps");
    ASSERT_EQ(job.destinations.size(), 2U);
    EXPECT_EQ(job.destinations[1].number, "9,+5550108812");
    EXPECT_EQ(job.destinations[1].mailbox, "12a#");
    EXPECT_EQ(job.creditCard, "4000 1234");
    EXPECT_EQ(job.resolution, Resolution::fine);
    EXPECT_EQ(job.speed, Speed::upTo14400);
    EXPECT_TRUE(job.coverSheet && job.confirmationSheet);
}

TEST(JobReaderForms, APjlJobHasAllItsCommands)
{
    EXPECT_THAT(pjlRefusals("ENTER", ""), HasSubstr("0: \"@PJL ENTER LANGUAGE=POSTSCRIPT\" is missing"));
    EXPECT_EQ(pjlRefusals("ENTER", "@PJL ENTER LANGUAGE=PCL\r\n"),
              "11: the document's language is \"PCL\"; the device has POSTSCRIPT alone\n");
    EXPECT_THAT(pjlRefusals("@PJL JOB", std::string(uel)), HasSubstr("1: \"@PJL JOB\" is missing"));
    EXPECT_EQ(pjlRefusals("@PJL JOB", "@PJL JOB NAME=\"letter.ps\"\r\n"),
              "2: the job does not begin with UEL\n");
    EXPECT_EQ(pjlRefusals("EOJ", std::string(uel)),
              "0: the job is not whole: it does not end with \"@PJL EOJ\" and UEL\n");
    auto lines = pjlJob();
    lines.pop_back();
    EXPECT_EQ(refusalsOf(readJob(joined(lines))),
              "0: the job is not whole: it does not end with \"@PJL EOJ\" and UEL\n");
}

TEST(JobReaderForms, TheNameOfAFaxHoldsNoQuotationMark)
{
    const auto name = std::string(uel) + "@PJL JOB NAME=\"let\"ter.ps\"\r\n";
    EXPECT_EQ(pjlRefusals("@PJL JOB", name), "1: the job's name holds a quotation mark\n");
}

TEST(JobReaderForms, CommandsMayBeWrittenAsPjlAllows)
{
    EXPECT_EQ(pjlRefusals("ENTER", "@PJL enter language = PostScript\n"), "");
    EXPECT_EQ(pjlRefusals("EOJ", std::string(uel) + "@PJL EOJ"), "");
    EXPECT_EQ(refusalsOf(readJob(joined(inserted(pjlJob(), "COVER_SHEET", "@PJL SET COPIES=1\r\n\r\n")))),
              "");
}

TEST(JobReaderForms, AJobWithinAJobIsRefusedAsOne)
{
    auto lines = pjlJob();
    lines.pop_back();
    lines.pop_back();
    const auto first = joined(lines);
    const auto all = first + joined(pjlJob());
    const auto job = readJob(all);
    EXPECT_THAT(refusalsOf(job),
                HasSubstr("18: the job goes on behind its document, without \"@PJL EOJ\"\n"));
    EXPECT_THAT(refusalsOf(readJob(joined(inserted(pjlJob(), "RESOLUTION", "@PJL JOB\r\n")))),
                HasSubstr("5: a job begins within the job\n"));
    EXPECT_THAT(refusalsOf(readJob(joined(inserted(pjlJob(), "RESOLUTION", "@PJL EOJ\r\n")))),
                HasSubstr("5: \"@PJL EOJ\" stands ahead of the document\n"));
    // Attribute lines behind the document are nobody's.
    lines = pjlJob();
    lines.back() = "@PJL COMMENT OID_ATT_FAX_RESOLUTION 1;\r\n" + std::string(uel);
    EXPECT_EQ(refusalsOf(readJob(joined(lines))), "19: the job goes on behind \"@PJL EOJ\", without UEL\n");
}

TEST(JobReaderForms, WhateverStandsBehindTheEndOfAJobIsNotPassedOver)
{
    for (const auto* more : {"%!PS\r\n", "@PJL ENTER LANGUAGE=POSTSCRIPT\r\n", "@PJL JOB\r\n"}) {
        auto lines = pjlJob();
        lines.back() = more + std::string(uel);
        EXPECT_EQ(refusalsOf(readJob(joined(lines))),
                  "19: the job goes on behind \"@PJL EOJ\", without UEL\n")
            << more;
    }
}

TEST(JobReaderForms, UelAheadOfTheDocumentEndsTheJob)
{
    // The lines of one fax and the document of another do not become a fax.
    const auto bytes = joined(inserted(pjlJob(), "ENTER", std::string(uel)));
    JobReader reader;
    EXPECT_EQ(reader.take(bytes), bytes.find("@PJL ENTER"));
    EXPECT_TRUE(reader.isComplete());
    EXPECT_THAT(refusalsOf(reader.finish()), HasSubstr("0: the job has no document\n"));
}

TEST(JobReaderForms, AttributeLinesStandBehindTheJobCommand)
{
    const auto lines = replaced(inserted(replaced(pjlJob(), "COVER_SHEET", ""), "@PJL JOB",
                                         std::string(uel) + "@PJL COMMENT OID_ATT_FAX_COVER_SHEET TRUE;\r\n"),
                                "@PJL JOB", "@PJL JOB NAME=\"letter.ps\"\r\n");
    EXPECT_EQ(refusalsOf(readJob(joined(lines))), "2: the attribute lines stand ahead of \"@PJL JOB\"\n");
}

TEST(JobReaderForms, BothFormsInOneJobContradictEachOther)
{
    const auto both = inserted(pjlJob(), "%%EndComments", "%%OID_ATT_FAX_RESOLUTION 1;\r\n");
    const auto job = readJob(joined(both));
    EXPECT_TRUE(job.isFax);
    EXPECT_THAT(refusalsOf(job), HasSubstr("14: attribute lines stand in the document, too"));
}

TEST(JobReaderForms, ADscJobMayBeWrappedInPjl)
{
    const auto wrapped =
        std::string(uel) + "@PJL ENTER LANGUAGE=POSTSCRIPT\n" + joined(dscJob()) + std::string(uel);
    const auto job = readJob(wrapped);
    EXPECT_EQ(refusalsOf(job), "");
    EXPECT_EQ(job.form, JobForm::dsc);
    EXPECT_EQ(job.destinations.size(), 2U);
    const auto inJob = std::string(uel) + "@PJL JOB NAME=\"spooled\"\n@PJL ENTER LANGUAGE=POSTSCRIPT\n" +
                       joined(dscJob()) + std::string(uel);
    EXPECT_EQ(refusalsOf(readJob(inJob)),
              "0: the job is not whole: it does not end with \"@PJL EOJ\" and UEL\n");
    EXPECT_EQ(refusalsOf(readJob(inJob + "@PJL EOJ\n" + std::string(uel))), "");
}

TEST(JobReaderForms, ADscJobHasItsFirstAndLastLines)
{
    const auto refusals = [](std::string_view part, const std::string& line) {
        return refusalsOf(readJob(joined(replaced(dscJob(), part, line))));
    };
    EXPECT_EQ(refusals("%!PS-Adobe", "%!PS\n"), "5: the document does not begin with \"%!PS-Adobe-3.0\"\n");
    EXPECT_EQ(refusals("%!PS-Adobe", ""), "4: the document does not begin with \"%!PS-Adobe-3.0\"\n");
    EXPECT_EQ(refusals("%!PS-Adobe", "%!PS-Adobe-3.0 EPSF-3.0\r\n"), "");
    EXPECT_EQ(refusals("EndComments", "72 72 moveto\n"),
              "16: the header comments end here, and not with \"%%EndComments\"\n");
    EXPECT_EQ(refusals("%%EOF", ""), "0: the job is not whole: it does not end in \"%%EOF\"\n");
    EXPECT_EQ(refusals("%%EOF", "%%EOF\r\n\r\n\x04"), "");
    EXPECT_EQ(refusals("%%EOF", "%%EOF\n%!PS\nshowpage\n"),
              "0: the job is not whole: it does not end in \"%%EOF\"\n");
}

TEST(JobReaderForms, SaysWhichLineCutsTheHeaderInTwo)
{
    for (const auto* line : {"\n", "% a comment\n", "72 72 moveto\n"})
        EXPECT_THAT(refusalsOf(readJob(joined(inserted(dscJob(), "RESOLUTION", line)))),
                    HasSubstr("8: the header comments end here, and not with \"%%EndComments\"\n"))
            << line;
    EXPECT_EQ(refusalsOf(readJob(joined(inserted(dscJob(), "RESOLUTION", "\n")))),
              "8: the header comments end here, and not with \"%%EndComments\"\n"
              "9: the line looks like an attribute, but stands behind the header comments, which end in line "
              "8\n");
}

TEST(JobReaderForms, AFaxWhoseFirstAttributeIsMalformedIsRefusedAndNotPrinted)
{
    const std::string name = "OID_ATT_FAX_COVER_SHEET TRUE;\r\n";
    for (const std::string ahead : {" %%", "", "\t", "% ", "@PJL COMMENT ", "\"%%", "\x04%%", "%%\xC3\xA4"}) {
        const auto job = readJob(joined(replaced(dscJob(), "COVER_SHEET", ahead + name)));
        EXPECT_TRUE(job.isFax) << ahead;
        EXPECT_THAT(refusalsOf(job), testing::StartsWith("5: the line")) << ahead;
    }
    // All of them, as a host might write them that knows them from hearsay.
    for (const std::string ahead : {" %%", "", "% ", "@PJL COMMENT "}) {
        auto lines = dscJob();
        for (auto& line : lines)
            if (line.starts_with("%%OID") || line.starts_with("%%QLM"))
                line.replace(0, 2, ahead);
        const auto job = readJob(joined(lines));
        EXPECT_TRUE(job.isFax && job.destinations.empty()) << ahead;
        EXPECT_EQ(refusalsOf(job),
                  "5: the line looks like an attribute, and does not begin with \"%%OID_ATT_\"\n")
            << ahead;
    }
    // Behind the header, there is no attribute.
    const auto all = joined(dscJob());
    const auto begin = all.find("%%OID_ATT");
    const auto end = all.find("%%EndComments");
    auto behind = all;
    behind.erase(begin, end - begin).insert(behind.find("%!PS\n"), all.substr(begin, end - begin));
    EXPECT_EQ(refusalsOf(readJob(behind)),
              "6: the line looks like an attribute, but stands behind the header "
              "comments, which end in line 5\n");
}

TEST(JobReaderForms, TwoFaxesWithoutUelBetweenThemAreRefused)
{
    const auto two = joined(dscJob()) + joined(dscJob());
    EXPECT_EQ(refusalsOf(readJob(two)),
              "25: another job's attribute lines stand in the document; end each job "
              "with UEL, or its connection\n");
    EXPECT_EQ(refusalsOf(readJob(joined(inserted(dscJob(), "%%Trailer",
                                                 "%!PS-Adobe-3.0 EPSF-3.0\n%%Title: (figure)\n"
                                                 "%%EndComments\nshowpage\n%%EOF\n")))),
              "");
    // As a driver changes those of a document.
    EXPECT_EQ(refusalsOf(readJob(joined(inserted(dscJob(), "%!PS\n",
                                                 "%!PS-Adobe-3.0\n% OID_ATT_FAX_RESOLUTION 1;\r\n"
                                                 "% QLMbegin\r\n%%EndComments\n")))),
              "");
}

TEST(JobReaderForms, WhatADriverMadeOfADocumentsLinesIsNoFaultOfAPjlJob)
{
    const auto job = readJob(joined(inserted(pjlJob(), "72 700 moveto", "% OID_ATT_FAX_RESOLUTION 1;\r\n")));
    EXPECT_EQ(refusalsOf(job), "");
    EXPECT_EQ(job.destinations.size(), 2U);
}

TEST(JobReaderForms, ADocumentsOwnLinesStayItsOwn)
{
    const auto hostile =
        joined({"%%Title: (other)\r\n", "%%OID_ATT_FAX_DESTINATION_PHONE \"666\";\r\n", "%%QLMbegin\r\n",
                "%%OID_ATT_CREDIT_CARD \"1\";\r\n", "%%QLMend\r\n", "%%EndComments\r\n",
                "@PJL COMMENT OID_ATT_FAX_DESTINATION_PHONE \"666\";\r\n", "%%EOF\r\n", "@PJL EOJ\r\n"});
    for (const auto& lines : {dscJob(), pjlJob()}) {
        const auto plain = readJob(joined(lines));
        const auto job = readJob(joined(inserted(lines, "%%Trailer", hostile)));
        EXPECT_EQ(refusalsOf(job), "");
        EXPECT_EQ(objectionsOf(job), "");
        EXPECT_EQ(job.title, "letter.ps");
        EXPECT_EQ(job.destinations.size(), plain.destinations.size());
        EXPECT_EQ(job.destinations.at(0).number, plain.destinations.at(0).number);
        EXPECT_EQ(job.creditCard, plain.creditCard);
    }
}

TEST(JobReaderForms, PostScriptWithoutAttributesIsPrinted)
{
    const auto job = readJob("%!PS-Adobe-3.0\n%%Title: (a)\n%%Pages: 2\n%%EndComments\nshowpage showpage\n");
    EXPECT_FALSE(job.isFax);
    EXPECT_EQ(job.form, JobForm::plain);
    EXPECT_EQ(job.title, "a");
    EXPECT_EQ(refusalsOf(job), "");
    const auto wrapped =
        readJob(std::string(uel) + "@PJL JOB NAME=\"b\"\r\n@PJL ENTER LANGUAGE=POSTSCRIPT\r\n" +
                "%!PS\nshowpage\n" + std::string(uel) + "@PJL EOJ\r\n" + std::string(uel));
    EXPECT_FALSE(wrapped.isFax);
    EXPECT_EQ(wrapped.title, "b");
    EXPECT_EQ(refusalsOf(wrapped), "");
}

TEST(JobReaderForms, WhatLooksLikeAnAttributeInAPrintJobIsRemarked)
{
    const auto job = readJob("%!PS-Adobe-3.0\n%%EndComments\n/a 1 def\n\n%!PS\n"
                             "%%OID_ATT_FAX_RESOLUTION 1;\r\nshowpage\n");
    EXPECT_FALSE(job.isFax);
    EXPECT_EQ(refusalsOf(job), "");
    EXPECT_EQ(objectionsOf(job),
              "6: the line looks like an attribute, but stands behind the header comments: it is "
              "the document's own\n");
}

TEST(JobReaderForms, AttributeLinesAloneAreNoJob)
{
    std::string lines;
    for (const auto& line : dscJob())
        if (line.find("OID_ATT") != std::string::npos || line.find("QLM") != std::string::npos)
            lines += line;
    EXPECT_EQ(refusalsOf(readJob(lines)), "1: the document does not begin with \"%!PS-Adobe-3.0\"\n"
                                          "0: the attribute lines do not end with \"%%EndComments\"\n"
                                          "0: the job is not whole: it does not end in \"%%EOF\"\n");
}

TEST(JobReaderForms, TitlesAndNumbersMayHoldAnyBytes)
{
    const auto job =
        readJob(joined(replaced(dscJob(), "%%Title", std::string("%%Title: (\xE4\0\xFF)\n", 15))));
    EXPECT_EQ(job.title, std::string("\xE4\0\xFF", 3));
    EXPECT_EQ(refusalsOf(job), "");
    const auto number = readJob(joined(
        replaced(dscJob(), "5550104477", std::string("%%OID_ATT_FAX_DESTINATION_PHONE \"5\0\";\r\n", 38))));
    EXPECT_THAT(refusalsOf(number), HasSubstr("10: the number \"5 \" holds 0x00, which no number"));
}

} // namespace
} // namespace quelm::device
