// Tests of copying a document into a job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/documents/document_copy.h"

#include "driver/documents/document_file.h"
#include "tests/driver/jobs/job_support.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <random>

namespace quelm::tests {
namespace {

class DocumentCopyTest : public JobTest {
protected:
    /// A document of these lines behind "%!PS\n", as it stands in the job, without that first line.
    std::string copied(const std::string& lines)
    {
        const DocumentFile document(file("a.ps", "%!PS\n" + lines));
        StringSink sink;
        end = copyDocument(document, sink);
        EXPECT_EQ(sink.text.size(), document.size()) << "no byte may be added or lost";
        return sink.text.substr(5);
    }

    void expectUnchanged(const std::string& lines) { EXPECT_EQ(copied(lines), lines); }

    DocumentEnd end;
};

TEST_F(DocumentCopyTest, OrdinaryLinesStayAsTheyAre)
{
    expectUnchanged("%%Page: 1 1\n(%%OID_ATT_X) show\n 100 @PJL\r\r\n%%Trailer\n%%EOF\nshowpage\n%%EOF");
    expectUnchanged("% %OID_ATT_X;\n%QLMbegin\n%%OID\n%%EndDoc\n@PJ\n%%Begin\n\x04 \n%\n%%\n@\n");
}

TEST_F(DocumentCopyTest, LinesLikeAttributesBecomeOtherCommentsOfTheSameSize)
{
    EXPECT_EQ(copied("%%OID_ATT_FAX_DESTINATION_PHONE \"0900\";\n"),
              "% OID_ATT_FAX_DESTINATION_PHONE \"0900\";\n");
    EXPECT_EQ(copied("%%oid_att_x;\n"), "% oid_att_x;\n");
    EXPECT_EQ(copied("%%QLMbegin\n%%QLMend\n"), "% QLMbegin\n% QLMend\n");
    EXPECT_EQ(copied("@PJL COMMENT OID_ATT_X;\n@pjl\n"), "%PJL COMMENT OID_ATT_X;\n%pjl\n");
    EXPECT_EQ(copied("\x04%!PS\n"), " %!PS\n");
}

TEST_F(DocumentCopyTest, LinesEndInAnyOfTheThreeWays)
{
    for (const std::string lineEnd : {"\n", "\r", "\r\n"})
        EXPECT_EQ(copied("a" + lineEnd + "%%QLMbegin" + lineEnd + lineEnd + "@PJL" + lineEnd),
                  "a" + lineEnd + "% QLMbegin" + lineEnd + lineEnd + "%PJL" + lineEnd);
    EXPECT_EQ(copied("%%QLM"), "% QLM") << "and without one at the end";
}

TEST_F(DocumentCopyTest, SaysWhetherTheLastLineIsEnded)
{
    copied("showpage");
    EXPECT_TRUE(end.insideLine);
    copied("showpage\n");
    EXPECT_FALSE(end.insideLine);
    copied("showpage\r");
    EXPECT_FALSE(end.insideLine);
}

TEST_F(DocumentCopyTest, EmbeddedDocumentsStayBalanced)
{
    expectUnchanged("%%BeginDocument: a\n%%BeginDocument: b\n%%EndDocument\n%%EndDocument\n");
    EXPECT_EQ(end.openDocuments, 0U);
    EXPECT_EQ(copied("%%EndDocument\n%%BeginDocument: a\n%%EndDocument\n%%EndDocument\n%%BeginDocument: b\n"),
              "% EndDocument\n%%BeginDocument: a\n%%EndDocument\n% EndDocument\n%%BeginDocument: b\n");
    EXPECT_EQ(end.openDocuments, 1U);
}

TEST_F(DocumentCopyTest, LinesBehindBlanksAreSeenAsADeviceMaySeeThem)
{
    const std::string blanks(" \t\f\v\0", 5);
    for (const char blank : blanks) {
        const std::string some(3, blank);
        EXPECT_EQ(copied(some + "%%OID_ATT_X;\n"), some + "% OID_ATT_X;\n");
        EXPECT_EQ(copied("a\r" + some + "%%QLMbegin\r"), "a\r" + some + "% QLMbegin\r");
        EXPECT_EQ(copied("a\r\n" + some + "@PJL\n"), "a\r\n" + some + "%PJL\n");
        EXPECT_EQ(copied(some + "\x04%!PS\n"), some + " %!PS\n");
        expectUnchanged("a" + some + "%%OID_ATT_X;\n");
    }
    // More than the copier holds at once.
    const std::string many(std::size_t{300} * 1024, '\0');
    EXPECT_TRUE(copied(many + "@PJL\n").ends_with(std::string("\0%PJL\n", 6)));
}

TEST_F(DocumentCopyTest, EmbeddedDocumentsBehindBlanksCountForNoDevice)
{
    EXPECT_EQ(copied("%%BeginDocument: a\n %%EndDocument\n\t%%BeginDocument: b\n%%EndDocument\n"),
              "%%BeginDocument: a\n % EndDocument\n\t% BeginDocument: b\n%%EndDocument\n");
    EXPECT_EQ(end.openDocuments, 0U);
}

TEST_F(DocumentCopyTest, AJobsEndAheadOfAnotherDocumentIsSeenWithinALine)
{
    EXPECT_EQ(copied("showpage\x04%!PS-Adobe-3.0\n"), "showpage %!PS-Adobe-3.0\n");
    EXPECT_EQ(copied("a \x04\x04%!PS \x04%!\n\x04%!"), "a \x04 %!PS  %!\n %!");
    expectUnchanged("a\x04 %!PS\nb\x04%\nc\x04\nd\n");
}

TEST_F(DocumentCopyTest, LinesOfAnnouncedBinarySectionsAreChangedInPlace)
{
    const std::string binary("\n%%QLMbegin\n@PJL\r%%OID_ATT_X;\n\0\x04%!\x01\x04%!", 38);
    const std::string changed("\n% QLMbegin\n%PJL\r% OID_ATT_X;\n\0 %!\x01\x04%!", 38);
    for (const std::string lineEnd : {"\n", "\r", "\r\n"}) {
        const std::string size = std::to_string(binary.size());
        for (const std::string& begin :
             {"%%BeginBinary: " + size + lineEnd, "%%BeginData: " + size + " Binary Bytes" + lineEnd,
              "%%BeginData: " + size + lineEnd})
            EXPECT_EQ(copied(begin + binary + "\n%%EndData" + lineEnd),
                      begin + changed + "\n%%EndData" + lineEnd);
    }
}

TEST_F(DocumentCopyTest, EmbeddedDocumentsInABinarySectionCountForNoDevice)
{
    EXPECT_EQ(
        copied("%%BeginBinary: 36\n%%BeginDocument: a\n%%EndDocument\nab\n%%EndBinary\n%%EndDocument\n"),
        "%%BeginBinary: 36\n% BeginDocument: a\n% EndDocument\nab\n%%EndBinary\n% EndDocument\n");
    EXPECT_EQ(end.openDocuments, 0U);
}

TEST_F(DocumentCopyTest, LinesBehindABinarySectionAreLookedAtAgain)
{
    EXPECT_EQ(copied("%%BeginBinary: 7\n%%Qlm%%\n%%EndBinary\nx\x04%!\n%%EndDocument\n"),
              "%%BeginBinary: 7\n% Qlm%%\n%%EndBinary\nx %!\n% EndDocument\n");
}

TEST_F(DocumentCopyTest, ACopyOfACopyIsTheSame)
{
    std::string lines = "%%OID_ATT_X;\n \t@PJL\nx\x04%!\n%%EndDocument\n%%BeginDocument: a\n";
    lines += "%%BeginBinary: 9\r\n@PJL\n\x04%!\n\r\n%%EndBinary\n  %%EndDocument\n";
    const std::string once = copied(lines);
    EXPECT_NE(once, lines);
    expectUnchanged(once);
}

TEST_F(DocumentCopyTest, AnAnnouncementThatIsNotTrueHidesNothing)
{
    for (const std::string announcement :
         {"%%BeginBinary: 999999", "%%BeginBinary: 3", "%%BeginBinary: 18446744073709551615",
          "%%BeginBinary: -1", "%%BeginBinary:", "%%BeginBinary: 12x", "%%BeginData: 10 Hex Bytes",
          "%%BeginData: 2 Binary Lines", "%%BeginData: 10 ASCII Bytes"})
        EXPECT_EQ(copied(announcement + "\n%%QLMbegin\n%%EndBinary\n"),
                  announcement + "\n% QLMbegin\n%%EndBinary\n");
}

TEST_F(DocumentCopyTest, EveryPositionOfALineInALargeDocumentIsSeen)
{
    // The line wanders over the end of the block that is read at once.
    const std::string before(std::size_t{256} * 1024 - 300, 'x');
    for (std::size_t more = 0; more < 320; ++more) {
        const std::string lead = before + std::string(more, 'y') + "\r\n";
        ASSERT_TRUE(
            copied(lead + "%%QLMbegin\r\n%%BeginBinary: 6\r\n@PJL\n\n%%EndBinary\r\nx\x04%!\r\n@PJL")
                .ends_with("\r\n% QLMbegin\r\n%%BeginBinary: 6\r\n%PJL\n\n%%EndBinary\r\nx %!\r\n%PJL"))
            << more;
    }
}

TEST_F(DocumentCopyTest, RandomBytesComeThroughInTheSameSize)
{
    std::mt19937 random(20240305);
    const std::string alphabet("\r\n%@PJLQM \x1b\x04!", 13);
    for (int round = 0; round < 50; ++round) {
        std::string text(std::uniform_int_distribution<std::size_t>(0, 3000)(random), ' ');
        for (char& byte : text)
            byte = alphabet[random() % alphabet.size()];
        const std::string copy = copied(text);
        EXPECT_EQ(copy.find("\n@PJL"), std::string::npos);
        EXPECT_EQ(copy.find("\r%%QLM"), std::string::npos);
        EXPECT_EQ(copy.find("\x04%!"), std::string::npos);
    }
}

TEST_F(DocumentCopyTest, AUelInTheMiddleFailsTheJob)
{
    const std::string uelInText = "a\n\x1b%-12345X@PJL RESET\n%!PS\nshowpage\n";
    const std::string uelInData = "%%BeginBinary: 9\n\x1b%-12345X\n%%EndBinary\n";
    for (const std::string& lines : {uelInText, uelInData}) {
        const std::string name = file("a.ps", "%!PS\n" + lines);
        const DocumentFile document(name);
        StringSink sink;
        EXPECT_EQ(
            errorLine([&] { copyDocument(document, sink); }),
            name + ": holds a command that ends a print job (UEL) in its middle, so that only a part of it "
                   "would be faxed; print it to a file again as one document");
    }
}

TEST_F(DocumentCopyTest, TellsItsProgress)
{
    const DocumentFile document(file("a.ps", "%!PS\n" + std::string(std::size_t{1} << 20U, 'x')));
    StringSink sink;
    std::vector<std::uint64_t> done;
    copyDocument(document, sink, [&](std::uint64_t now, std::uint64_t total) {
        EXPECT_EQ(total, document.size());
        done.push_back(now);
    });
    EXPECT_GE(done.size(), 4U);
    EXPECT_TRUE(std::ranges::is_sorted(done));
    EXPECT_EQ(done.back(), document.size());
}

/// Counts what a job's bytes come to, and keeps none.
class CountingSink final : public JobSink {
public:
    void write(std::string_view bytes) override { size += bytes.size(); }
    std::uint64_t size = 0;
};

long mostMemoryInKilobytes()
{
    rusage usage = {};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

TEST_F(DocumentCopyTest, ALargeDocumentNeedsNoMoreMemoryThanASmallOne)
{
    const std::string name = file("large.ps", "%!PS\n");
    constexpr std::uint64_t size = 100'000'000;
    std::filesystem::resize_file(name, size); // takes no room on the disk
    const DocumentFile document(name);
    // In a process of its own, whose high-water mark no other test has raised meanwhile.
    const pid_t child = ::fork();
    if (child == 0) {
        const long before = mostMemoryInKilobytes();
        CountingSink sink;
        copyDocument(document, sink);
        constexpr long allowed = 32 * 1024;
        ::_exit(sink.size == size && mostMemoryInKilobytes() - before < allowed ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

} // namespace
} // namespace quelm::tests
