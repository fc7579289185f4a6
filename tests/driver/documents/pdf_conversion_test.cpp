// Tests of PDF documents, which Ghostscript turns into PostScript.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/documents/pdf_conversion.h"

#include "driver/documents/document.h"
#include "tests/driver/jobs/job_support.h"

#include <sys/stat.h>

#include <chrono>

namespace quelm::tests {
namespace {

class PdfConversionTest : public JobTest {
protected:
    /// A PDF of two pages, made with further options.
    std::string pdf(const std::string& name, const std::vector<std::string>& options = {}) const
    {
        const std::string source = file(name + ".source.ps", postScriptPages({"First page", "Second page"}));
        std::vector<std::string> arguments = {"-sDEVICE=pdfwrite", "-sOutputFile=" + path(name)};
        arguments.insert(arguments.end(), options.begin(), options.end());
        arguments.push_back(source);
        runGhostscript(arguments);
        return path(name);
    }

    /// A stand-in for Ghostscript that does what the shell commands say.
    PdfConversion standIn(const std::string& commands) const
    {
        PdfConversion conversion;
        conversion.ghostscript = file("stand-in", "#!/bin/sh\n" + commands);
        ::chmod(conversion.ghostscript.c_str(), 0700);
        return conversion;
    }

    std::vector<std::string> pagesOf(const Document& document) const
    {
        std::string text(document.size(), '\0');
        document.read(0, text.data(), text.size());
        return render(file("converted.ps", text)).pages;
    }
};

const std::vector<std::string> bothPages = {"First page", "Second page"};

TEST_F(PdfConversionTest, APdfBecomesPostScript)
{
    const Document document = Document::open(pdf("letter.txt"));
    EXPECT_EQ(pagesOf(document), bothPages);
    EXPECT_FALSE(document.isEncapsulated());
    EXPECT_TRUE(document.warnings().empty());
}

TEST_F(PdfConversionTest, APdfIsKnownByItsContent)
{
    EXPECT_EQ(pagesOf(Document::open(file("a.ps", "some bytes ahead\n" + contentOf(pdf("a.pdf"))))),
              bothPages);
}

TEST_F(PdfConversionTest, APdfBehindPjlLinesIsConverted)
{
    const std::string wrapped =
        "\x1b%-12345X@PJL JOB\r\n@PJL ENTER LANGUAGE=PDF\r\n" + contentOf(pdf("a.pdf"));
    EXPECT_EQ(pagesOf(Document::open(file("a.prn", wrapped))), bothPages);
}

TEST_F(PdfConversionTest, NamesThatMeanSomethingToGhostscriptAreNamesOnly)
{
    const std::string content = contentOf(pdf("a.pdf"));
    for (const char* name : {"-dNOSAFER", "@a%d", "50%o (x).pdf"})
        EXPECT_EQ(pagesOf(Document::open(file(name, content))), bothPages) << name;
}

TEST_F(PdfConversionTest, NoFileStaysBehind)
{
    const std::string name = pdf("a.pdf");
    const auto before = namesInFolder();
    Document::open(name);
    EXPECT_EQ(namesInFolder(), before);
}

TEST_F(PdfConversionTest, APdfWithAPasswordIsRefused)
{
    const std::string name = pdf("a.pdf", {"-sOwnerPassword=owner", "-sUserPassword=user", "-dEncryptionR=3",
                                           "-dKeyLength=128", "-dCompatibilityLevel=1.4"});
    EXPECT_EQ(errorLine([&] { Document::open(name); }),
              name + ": the PDF is protected by a password; save it without one and fax that");
}

TEST_F(PdfConversionTest, APdfThatAnybodyMayReadIsConverted)
{
    EXPECT_EQ(pagesOf(Document::open(pdf("a.pdf", {"-sOwnerPassword=owner", "-dEncryptionR=3",
                                                   "-dKeyLength=128", "-dCompatibilityLevel=1.4"}))),
              bothPages);
}

TEST_F(PdfConversionTest, APdfBeyondRepairIsRefused)
{
    for (const char* content : {"%PDF-1.4\n", "%PDF-1.4\nrubbish rubbish\n"}) {
        const std::string name = file("a.pdf", content);
        const std::string line = errorLine([&] { Document::open(name); });
        EXPECT_TRUE(line.starts_with(name + ": the PDF is damaged (")) << line;
        EXPECT_TRUE(line.ends_with("); open and save it again, and fax that")) << line;
        EXPECT_EQ(line.find('\n'), std::string::npos) << line;
    }
}

TEST_F(PdfConversionTest, APdfWithoutPagesIsRefused)
{
    const std::string name =
        file("a.pdf", "%PDF-1.4\n1 0 obj\n<</Type/Catalog/Pages 2 0 R>>\nendobj\n"
                      "2 0 obj\n<</Type/Pages/Kids[]/Count 0>>\nendobj\n"
                      "xref\n0 3\n0000000000 65535 f \n0000000009 00000 n \n0000000054 00000 n \n"
                      "trailer<</Size 3/Root 1 0 R>>\nstartxref\n99\n%%EOF\n");
    EXPECT_EQ(errorLine([&] { Document::open(name); }), name + ": the PDF has no pages");
}

TEST_F(PdfConversionTest, AMendedPdfIsFaxedWithAWarning)
{
    const std::string whole = contentOf(pdf("whole.pdf"));
    const std::string name = file("a.pdf", whole.substr(0, whole.rfind("startxref")));
    const Document document = Document::open(name);
    EXPECT_EQ(pagesOf(document), bothPages);
    ASSERT_EQ(document.warnings().size(), 1U);
    EXPECT_EQ(
        document.warnings().front(),
        name + ": the PDF is damaged and was mended (no startxref token found); check the pages of the fax");
}

TEST_F(PdfConversionTest, WithoutGhostscriptTheLineSaysSo)
{
    PdfConversion conversion;
    conversion.ghostscript = "quelm-no-such-program";
    const std::string name = pdf("a.pdf");
    EXPECT_EQ(errorLine([&] { Document::open(name, conversion); }),
              name +
                  ": the PDF cannot be turned into PostScript: the program \"quelm-no-such-program\" is not "
                  "installed; install it and try again");
}

TEST_F(PdfConversionTest, AConversionThatNeverEndsIsStopped)
{
    PdfConversion conversion = standIn("exec sleep 600\n");
    conversion.timeLimit = std::chrono::milliseconds(50);
    const std::string name = file("a.pdf", "%PDF-1.4\n");
    const std::string line = errorLine([&] { Document::open(name, conversion); });
    EXPECT_NE(line.find("ran longer than 50 ms"), std::string::npos) << line;
}

TEST_F(PdfConversionTest, AFailureWithoutExplanationNamesTheStatus)
{
    const std::string name = file("a.pdf", "%PDF-1.4\n");
    EXPECT_EQ(
        errorLine([&] { Document::open(name, standIn("exit 7\n")); }),
        name +
            ": the PDF is damaged (Ghostscript ended with status 7); open and save it again, and fax that");
}

TEST_F(PdfConversionTest, AConverterThatNamesNoPageMadeNone)
{
    const std::string name = file("a.pdf", "%PDF-1.4\n");
    const std::string line =
        errorLine([&] { Document::open(name, standIn("echo '%!PS'; echo Copyright >&2\n")); });
    EXPECT_TRUE(line.starts_with(name + ": the PDF is damaged (")) << line;
}

} // namespace
} // namespace quelm::tests
