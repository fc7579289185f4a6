// Jobs as Ghostscript renders them: every kind of document, in both forms of job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/job_writer.h"
#include "tests/driver/jobs/job_support.h"
#include "tests/support/build_paths.h"

#include <random>

namespace quelm::tests {
namespace {

/// The two forms of a job, with and without a cover page.
struct Form {
    const char* name;
    Pdl pdl;
    bool cover;
};

class RenderedJobTest : public JobTest, public testing::WithParamInterface<Form> {
protected:
    /// Expects the job with this document to put out these texts, page by page, behind the cover page
    /// when there is one, and Ghostscript to have nothing to say.
    void expectPages(const Document& document, std::vector<std::string> texts)
    {
        FakeFaxSession session;
        session.cover = GetParam().cover;
        const Rendering rendering = render(file("job", writtenJob(session, document, GetParam().pdl)));
        EXPECT_EQ(rendering.exitStatus, 0);
        EXPECT_EQ(rendering.messages, "");
        if (GetParam().cover)
            texts.insert(texts.begin(), "Fax Cover Sheet");
        EXPECT_EQ(rendering.pages, texts);
    }

    void expectPages(const std::string& content, std::vector<std::string> texts)
    {
        expectPages(Document::open(file("document", content)), std::move(texts));
    }
};

INSTANTIATE_TEST_SUITE_P(Forms, RenderedJobTest,
                         testing::Values(Form{"Dsc", Pdl::dsc, false},
                                         Form{"DscWithCoverPage", Pdl::dsc, true},
                                         Form{"Pjl", Pdl::pjl, false},
                                         Form{"PjlWithCoverPage", Pdl::pjl, true}),
                         [](const auto& form) { return form.param.name; });

TEST_P(RenderedJobTest, PostScript) { expectPages(postScriptPages({"One", "Two"}), {"One", "Two"}); }

TEST_P(RenderedJobTest, Pdf)
{
    const std::string source = file("source.ps", postScriptPages({"One", "Two"}));
    runGhostscript({"-sDEVICE=pdfwrite", "-sPAPERSIZE=a4", "-sOutputFile=" + path("document.pdf"), source});
    expectPages(Document::open(path("document.pdf")), {"One", "Two"});
}

TEST_P(RenderedJobTest, TheSampleLetter)
{
    FakeFaxSession session;
    session.cover = GetParam().cover;
    const Document document = Document::open(build_paths::inProject("samples/letter.ps"));
    const Rendering rendering = render(file("job", writtenJob(session, document, GetParam().pdl)));
    EXPECT_EQ(rendering.exitStatus, 0);
    EXPECT_EQ(rendering.messages, "");
    const std::size_t covers = GetParam().cover ? 1 : 0;
    ASSERT_EQ(rendering.pages.size(), covers + 2);
    EXPECT_NE(rendering.pages[covers].find("Harbour Lane Bakery"), std::string::npos);
    EXPECT_NE(rendering.pages[covers + 1].find("Order form"), std::string::npos);
}

TEST_P(RenderedJobTest, APrintFileOfAnotherDriver)
{
    expectPages("\x1b%-12345X@PJL JOB\r\n@PJL ENTER LANGUAGE=POSTSCRIPT\r\n\x04" + postScriptPages({"One"}) +
                    "\x04\x1b%-12345X@PJL EOJ\r\n\x1b%-12345X",
                {"One"});
}

TEST_P(RenderedJobTest, LinesThatEndInACarriageReturn)
{
    std::string content = postScriptPages({"One", "Two"});
    for (char& byte : content)
        byte = byte == '\n' ? '\r' : byte;
    expectPages(content, {"One", "Two"});
}

TEST_P(RenderedJobTest, LinesThatLookLikeTheJobsOwn)
{
    expectPages("%!PS-Adobe-3.0\n%%OID_ATT_FAX_DESTINATION_PHONE "
                "\"0900\";\n%%QLMbegin\n%%EndComments\n%%EndDocument\n"
                "@PJL SET RESOLUTION=600 ) }\n/Helvetica 12 selectfont 72 700 moveto (One) show showpage\n"
                "%%Trailer\n%%EOF\n%%BeginDocument: x\n72 700 moveto (Two) show showpage\n%%EOF",
                {"One", "Two"});
}

TEST_P(RenderedJobTest, BinaryData)
{
    // The image is read from the program itself: one byte more or less, and what follows is no PostScript.
    constexpr std::size_t width = 64;
    std::mt19937 random(5);
    std::string section = "64 64 8 [64 0 0 -64 0 64] { currentfile row readstring pop } bind image\n";
    std::string image = "\n@PJL\n%%QLMbegin\n";
    while (image.size() < width * width)
        image += static_cast<char>(random() & 0xffU);
    section += image;
    expectPages("%!PS-Adobe-3.0\n/Helvetica 12 selectfont 72 700 moveto (One) show\n/row 64 string def\n"
                "gsave 64 64 scale\n%%BeginBinary: " +
                    std::to_string(section.size()) + "\n" + section + "\n%%EndBinary\ngrestore showpage\n",
                {"One"});
}

TEST_P(RenderedJobTest, AFigureThatPutsOutItsPage)
{
    expectPages(
        "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 200 800\nsave /Helvetica 12 selectfont 72 700 moveto "
        "(One) show showpage restore\n",
        {"One"});
}

TEST_P(RenderedJobTest, AFigureThatLeavesItsPageToOthers)
{
    expectPages("%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 200 800\n/Helvetica 12 selectfont 72 700 moveto "
                "(One) show",
                {"One"});
}

TEST_P(RenderedJobTest, ADocumentThatLeavesThingsOnItsStacks)
{
    expectPages("%!PS\n1 2 3 5 dict begin gsave " + postScriptPages({"One"}) + "(left over)", {"One"});
}

TEST_P(RenderedJobTest, AJobWhoseTitleIsNotHarmless)
{
    FakeFaxSession session;
    session.cover = GetParam().cover;
    JobFacts facts = someFacts();
    facts.title = "((\\ \"\r\n@PJL showpage\n\x1b%-12345X \xc3\xbc " + std::string(300, ')');
    const Document document = Document::open(file("document", postScriptPages({"One"})));
    const Rendering rendering = render(file("job", writtenJob(session, document, GetParam().pdl, facts)));
    EXPECT_EQ(rendering.exitStatus, 0);
    EXPECT_EQ(rendering.messages, "");
    EXPECT_EQ(rendering.pages.size(), GetParam().cover ? 2U : 1U);
}

} // namespace
} // namespace quelm::tests
