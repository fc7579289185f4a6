// Tests of PDF documents, which Ghostscript turns into PostScript.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/documents/pdf_conversion.h"

#include "base/error.h"
#include "driver/documents/document.h"
#include "driver/documents/page_tally.h"
#include "tests/driver/jobs/job_support.h"
#include "tests/support/temporary_folder.h"

#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>

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
    GhostscriptBounds standIn(const std::string& commands) const
    {
        GhostscriptBounds bounds;
        bounds.program = file("stand-in", "#!/bin/sh\n" + commands);
        ::chmod(bounds.program.c_str(), 0700);
        return bounds;
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
    EXPECT_EQ(document.pages(), 2U);
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

TEST_F(PdfConversionTest, APdfThatLosesAnImageIsFaxedWithAWarning)
{
    std::string content = "%PDF-1.4\n";
    std::string references = "xref\n0 6\n0000000000 65535 f \n";
    const auto add = [&](int number, const std::string& object) {
        const std::string place = std::to_string(content.size());
        references += std::string(10 - place.size(), '0') + place + " 00000 n \n";
        content += std::to_string(number) + " 0 obj\n" + object + "\nendobj\n";
    };
    add(1, "<</Type/Catalog/Pages 2 0 R>>");
    add(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
    add(3,
        "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 200]/Resources<</XObject<</I 5 0 R>>>>/Contents 4 0 R>>");
    add(4, "<</Length 29>>stream\nq 99 0 0 99 9 9 cm /I Do Q    \nendstream");
    add(5, "<</Type/XObject/Subtype/Image/Width 9/Height 9/BitsPerComponent 8/ColorSpace/DeviceGray"
           "/Filter/DCTDecode/Length 9>>stream\nno image.\nendstream");
    const std::string start = std::to_string(content.size());
    content += references + "trailer\n<</Size 6/Root 1 0 R>>\nstartxref\n" + start + "\n%%EOF\n";
    const std::string name = file("image.pdf", content);
    const Document document = Document::open(name);
    ASSERT_EQ(document.warnings().size(), 1U);
    EXPECT_EQ(
        document.warnings().front(),
        name + ": the PDF is damaged and was mended (recoverable image error); check the pages of the fax");
}

TEST_F(PdfConversionTest, APdfOfWhichAPageCannotBeFoundIsRefused)
{
    std::string content = contentOf(pdf("whole.pdf"));
    const std::size_t secondPage = content.find("<</Type/Page/", content.find("<</Type/Page/") + 1);
    ASSERT_NE(secondPage, std::string::npos);
    const std::size_t end = content.find("endobj", secondPage);
    content.replace(secondPage, end - secondPage, end - secondPage, 'x');
    const std::string name = file("a.pdf", content);
    EXPECT_EQ(errorLine([&] { Document::open(name); }),
              name +
                  ": only 1 of its 2 pages could be turned into PostScript; open and save it again, and fax "
                  "that");
}

TEST_F(PdfConversionTest, WithoutGhostscriptTheLineSaysSo)
{
    GhostscriptBounds bounds;
    bounds.program = "quelm-no-such-program";
    const std::string name = pdf("a.pdf");
    EXPECT_EQ(errorLine([&] { Document::open(name, bounds); }),
              name + ": the PDF cannot be turned into PostScript: Ghostscript, the program "
                     "\"quelm-no-such-program\", is not "
                     "installed; install it and try again");
}

TEST_F(PdfConversionTest, AConversionThatNeverEndsIsStopped)
{
    GhostscriptBounds bounds = standIn("exec sleep 600\n");
    bounds.timeLimit = std::chrono::milliseconds(50);
    const std::string name = file("a.pdf", "%PDF-1.4\n");
    const std::string line = errorLine([&] { Document::open(name, bounds); });
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

/// Twelve pages with a picture each that no compression makes smaller, some 1.3 MB as PostScript.
std::string largeDocument()
{
    return "%!PS\n1 1 12 { pop gsave 72 72 translate 200 200 scale 200 200 8 [200 0 0 200 0 0]\n"
           "{ 200 string 0 1 199 { 1 index exch rand 256 mod put } for } image grestore showpage } for\n";
}

class LargePdfTest : public PdfConversionTest {
protected:
    LargePdfTest()
    {
        runGhostscript({"-sDEVICE=pdfwrite", "-sOutputFile=" + name, file("large.ps", largeDocument())});
    }

    std::string refusal(const GhostscriptBounds& bounds = {}) const
    {
        const std::string line = errorLine([&] { Document::open(name, bounds); });
        return line.starts_with(name + ": ") ? line.substr(name.size() + 2) : "(" + line + ")";
    }

    /// What happens in a folder for temporary files with so much room, which only root can make: the line of
    /// refusal, or the number of the pages that are there. Empty when it cannot be made.
    std::string resultWithRoom(int kilobytes) const
    {
        const std::string room = path("room");
        std::filesystem::create_directory(room);
        const int status = inProcess([&] {
            const std::string options = "size=" + std::to_string(kilobytes) + "k";
            if (::unshare(CLONE_NEWNS) != 0 || ::mount("", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
                ::mount("none", room.c_str(), "tmpfs", 0, options.c_str()) != 0)
                return 2;
            ::setenv("TMPDIR", room.c_str(), 1);
            std::string result;
            try {
                const Document document = Document::open(name);
                std::string text(document.size(), '\0');
                (void)document.read(0, text.data(), text.size());
                PageTally tally;
                tally.append(text);
                result = std::to_string(tally.pages()) + " pages";
            } catch (const Error& error) {
                result = error.what();
            }
            (void)file("result", result);
            return std::filesystem::is_empty(room) ? 0 : 1;
        });
        EXPECT_TRUE(status == 0 || status == 2) << status << ": a file was left";
        return status == 0 ? contentOf(path("result")) : "";
    }

    const std::string name = path("large.pdf");
};

TEST_F(LargePdfTest, NotASinglePageIsLostWhereTheDiskIsFull)
{
    const std::string start = name + ": the PDF cannot be turned into PostScript: ";
    const std::string forGhostscript = start + "the disk is full, there is no room for temporary files in " +
                                       path("room") +
                                       "; make room there, or set TMPDIR to a folder with more";
    const std::string forUs = start + "the file for it in " + path("room") +
                              ": cannot be written: the disk is full; make room and try again";
    int refused = 0;
    for (int room = 200; room < 4000; room += 400) {
        const std::string result = resultWithRoom(room);
        if (result.empty() || result == "12 pages")
            continue;
        ++refused;
        EXPECT_TRUE(result == forGhostscript || result == forUs) << result;
    }
    EXPECT_EQ(refused > 2, !resultWithRoom(10'000).empty());
}

TEST_F(LargePdfTest, TemporaryFilesThatCannotBeWrittenAreNamed)
{
    // As on a full disk, writing fails; by itself the limit would end Ghostscript.
    EXPECT_EQ(
        refusal(standIn("trap '' XFSZ; ulimit -f 500; exec gs \"$@\"\n")),
        "the PDF cannot be turned into PostScript: the disk is full, there is no room for temporary files "
        "in " +
            folder() + "; make room there, or set TMPDIR to a folder with more");
    EXPECT_EQ(refusal(standIn("ulimit -f 500; exec gs \"$@\"\n")),
              "the PDF cannot be turned into PostScript: the program \"" + path("stand-in") +
                  "\" was ended: in " + folder() +
                  ", the file would exceed the size limit; raise the limit and try again");
}

TEST_F(LargePdfTest, PostScriptThatCannotBeWrittenIsNamed)
{
    const std::string postScript = file("large.out.ps", std::string(200'000, ' '));
    GhostscriptBounds bounds = standIn("exec cat '" + postScript + "'\n");
    const std::string line =
        "the PDF cannot be turned into PostScript: the file for it in " + folder() +
        ": cannot be written: the file would exceed the size limit; raise the limit and try "
        "again";
    {
        const FileSizeLimit limit(100'000);
        EXPECT_EQ(refusal(bounds), line);
    }
    bounds.fileLimit = 100'000;
    EXPECT_EQ(refusal(bounds), line) << "a document may make more of it than there is room for";
}

TEST_F(LargePdfTest, PostScriptThatIsNotWholeIsRefused)
{
    const std::string rest =
        " of its 12 pages could be turned into PostScript; open and save it again, and fax "
        "that";
    EXPECT_EQ(refusal(standIn("gs \"$@\" | head -c 500000\n")), "only 4" + rest);
    EXPECT_EQ(refusal(standIn("gs \"$@\" | grep -av '^%%EOF'\n")), "only 11" + rest);
    EXPECT_EQ(refusal(standIn("gs \"$@\" | grep -av '^%%Page: 5 '\n")), "only 4" + rest);
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
