// Tests of opening documents.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/documents/document.h"

#include "base/file_io.h"
#include "driver/documents/document_file.h"
#include "tests/driver/jobs/job_support.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <thread>

namespace quelm::tests {
namespace {

class DocumentTest : public JobTest {
protected:
    /// The line with which a file of this content is refused, behind its path.
    std::string refusal(std::string_view content) const
    {
        const std::string name = file("refused", content);
        const std::string line = errorLine([&] { Document::open(name); });
        return line.starts_with(name + ": ") ? line.substr(name.size() + 2) : "(" + line + ")";
    }
};

std::string postScriptOf(const Document& document)
{
    std::string text(document.size(), '\0');
    text.resize(document.read(0, text.data(), text.size() + 10));
    return text;
}

/// Makes `descriptor` standard input for its life.
class StandardInput {
public:
    explicit StandardInput(int descriptor) : before_(::dup(STDIN_FILENO))
    {
        ::dup2(descriptor, STDIN_FILENO);
    }
    ~StandardInput() { ::dup2(before_.get(), STDIN_FILENO); }
    StandardInput(const StandardInput&) = delete;
    StandardInput& operator=(const StandardInput&) = delete;

private:
    FileHandle before_;
};

std::string littleEndian(std::uint32_t number)
{
    std::string bytes;
    for (int i = 0; i < 4; ++i, number >>= 8U)
        bytes += static_cast<char>(number & 0xffU);
    return bytes;
}

TEST_F(DocumentTest, PostScriptIsTakenAsItStands)
{
    const std::string content = "%!PS-Adobe-3.0\rshowpage\r";
    const Document document = Document::open(file("letter.txt", content));
    EXPECT_EQ(postScriptOf(document), content);
    EXPECT_EQ(document.name(), "letter.txt");
    EXPECT_FALSE(document.isEncapsulated());
    EXPECT_TRUE(document.warnings().empty());
}

TEST_F(DocumentTest, ReadsFromAnyOffset)
{
    const Document document = Document::open(file("a.ps", "\x04%!PS\nshowpage\n\x04"));
    std::array<char, 4> bytes{};
    EXPECT_EQ(document.read(5, bytes.data(), bytes.size()), 4U);
    EXPECT_EQ(std::string_view(bytes.data(), 4), "show");
    EXPECT_EQ(document.read(13, bytes.data(), bytes.size()), 1U);
    EXPECT_EQ(document.read(14, bytes.data(), bytes.size()), 0U);
    EXPECT_EQ(document.read(99, bytes.data(), bytes.size()), 0U);
}

TEST_F(DocumentTest, TheWrappingOfAPrinterDriverIsNoPartOfTheDocument)
{
    const Document document = Document::open(
        file("a.prn", "\x1b%-12345X@PJL JOB\r\n@PJL ENTER LANGUAGE=POSTSCRIPT\r\n%!PS\nshowpage\n\x04"
                      "\x1b%-12345X@PJL EOJ\r\n\x1b%-12345X"));
    EXPECT_EQ(postScriptOf(document), "%!PS\nshowpage\n");
}

TEST_F(DocumentTest, OfAnEpsFileWithPreviewThePostScriptCounts)
{
    const std::string figure = "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 9 9\nshowpage\n";
    const std::string preview = "II*preview";
    const auto at = static_cast<std::uint32_t>(30 + preview.size());
    const std::string header =
        "\xc5\xd0\xd3\xc6" + littleEndian(at) + littleEndian(static_cast<std::uint32_t>(figure.size()));
    const Document document =
        Document::open(file("a.eps", header + std::string(18, '\0') + preview + figure + "trailing preview"));
    EXPECT_EQ(postScriptOf(document), figure);
    EXPECT_TRUE(document.isEncapsulated());

    EXPECT_EQ(refusal(header + std::string(18, '\0') + preview + "%!"),
              "the EPS file is damaged: its PostScript would end behind the end of the file");
}

TEST_F(DocumentTest, FilesThatCannotBeFaxedGetOneClearLineEach)
{
    EXPECT_EQ(errorLine([&] { Document::open(path("missing.ps")); }),
              path("missing.ps") + ": there is no such document");
    EXPECT_EQ(errorLine([&] { Document::open(path(".")); }),
              path(".") + ": is a folder; name a PostScript or PDF document in it");
    EXPECT_EQ(errorLine([] { Document::open("/dev/zero"); }), "/dev/zero: is a device, not a document");
    EXPECT_EQ(refusal(""), "is empty; there is nothing to fax");
    EXPECT_EQ(refusal("Dear Ann,\n"), "is neither PostScript nor PDF; save or print it as PDF and fax that");
    EXPECT_EQ(refusal(" "), "is neither PostScript nor PDF; save or print it as PDF and fax that");
    EXPECT_EQ(
        refusal("\x1b%-12345X@PJL ENTER LANGUAGE=PCLXL\r\n) HP-PCL XL"),
        "is a print file in PCLXL, not in PostScript; print it to a file again with a PostScript driver");
    EXPECT_EQ(
        refusal("\x01M%!PS\n"),
        "is in tagged binary form (TBCP), for serial lines; print it to a file again as plain PostScript");
}

TEST_F(DocumentTest, AFileThatMayNotBeReadIsRefused)
{
    const std::string name = file("secret.ps", "%!PS\n");
    ::chmod(name.c_str(), 0);
    if (::geteuid() == 0) {
        // Nothing is kept from this user; a path through a file cannot be opened either.
        EXPECT_EQ(errorLine([&] { Document::open(name + "/x"); }),
                  name + "/x: cannot be opened: Not a directory");
    } else {
        EXPECT_EQ(errorLine([&] { Document::open(name); }), name + ": cannot be opened: permission denied");
    }
}

TEST_F(DocumentTest, AFifoThatNobodyWritesToIsEmptyInsteadOfWaitingForEver)
{
    ASSERT_EQ(::mkfifo(path("fifo").c_str(), 0600), 0);
    EXPECT_EQ(errorLine([&] { Document::open(path("fifo")); }),
              path("fifo") + ": is empty; there is nothing to fax");
}

TEST_F(DocumentTest, StandardInputMayBeAPipe)
{
    const std::string content = "%!PS\n" + std::string(std::size_t{1} << 20U, ' ') + "showpage\n\x04";
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    const FileHandle readEnd(ends[0]);
    std::thread writer([&] {
        FileHandle writeEnd(ends[1]);
        writeAll(writeEnd.get(), content, "the pipe");
    });
    const StandardInput input(readEnd.get());
    const Document document = Document::open("-");
    writer.join();
    EXPECT_EQ(postScriptOf(document), content.substr(0, content.size() - 1));
    EXPECT_EQ(document.name(), "Standard input");
    EXPECT_EQ(namesInFolder(), std::vector<std::string>{}) << "its copy has no name";
}

TEST_F(DocumentTest, StandardInputMayBeAFile)
{
    const std::string name = file("a.ps", "%!PS\nshowpage\n");
    const FileHandle opened(::open(name.c_str(), O_RDONLY | O_CLOEXEC));
    const StandardInput input(opened.get());
    const Document document = Document::open("-");
    EXPECT_EQ(postScriptOf(document), "%!PS\nshowpage\n");
    EXPECT_TRUE(document.isSameFile(name));
}

TEST_F(DocumentTest, EmptyStandardInputIsRefused)
{
    const FileHandle empty(::open(file("empty", "").c_str(), O_RDONLY | O_CLOEXEC));
    const StandardInput input(empty.get());
    EXPECT_EQ(errorLine([] { Document::open("-"); }), "standard input: is empty; there is nothing to fax");
}

TEST_F(DocumentTest, WhatIsDoneToItsFileMeanwhileChangesNothing)
{
    const std::string content = "%!PS\nshowpage\n" + std::string(1000, ' ');
    const std::string name = file("a.ps", content);
    const Document document = Document::open(name);
    std::filesystem::resize_file(name, 500);
    file("a.ps", "%!PS\nnonsense\n");
    EXPECT_EQ(postScriptOf(document), content);
}

TEST_F(DocumentTest, ADocumentThatBecomesShorterFailsTheReading)
{
    const std::string name = file("a.ps", "%!PS\n" + std::string(1000, ' '));
    const DocumentFile document(name); // what opening reads
    std::filesystem::resize_file(name, 500);
    std::array<char, 900> bytes{};
    EXPECT_EQ(errorLine([&] { (void)document.read(0, bytes.data(), bytes.size()); }),
              name + ": became shorter while it was read; try again when it is complete");
}

TEST_F(DocumentTest, AFileThatIsWrittenToWhileItIsReadIsRefused)
{
    const std::string name = file("a.ps", "%!PS\nshowpage\n");
    const DocumentFile document(name);
    EXPECT_NO_THROW(document.requireUnchanged());
    std::filesystem::last_write_time(name,
                                     std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
    EXPECT_EQ(errorLine([&] { document.requireUnchanged(); }),
              name + ": was changed while it was read; try again when it is complete");
}

TEST_F(DocumentTest, WhatIsDoneToAPdfMeanwhileChangesNothing)
{
    const std::string name = file("a.pdf", "%PDF-1.4\nold");
    const DocumentFile document(name);
    const FileHandle copy = document.copy();
    file("a.pdf", "%PDF-1.4\nnew");
    std::array<char, 32> bytes{};
    const auto size = readFully(copy.get(), bytes.data(), bytes.size(), 0, name);
    EXPECT_EQ(std::string(bytes.data(), size), "%PDF-1.4\nold");
}

TEST_F(DocumentTest, LinesThatMeanSomethingToADeviceAreChangedAheadOfTheCheck)
{
    // As it stands, "@PJL" would be a command that is not known.
    const Document document = Document::open(file("a.ps", "%!PS\n@PJL\n%%QLMbegin\nshowpage\x04%!\n"));
    EXPECT_EQ(postScriptOf(document), "%!PS\n%PJL\n% QLMbegin\nshowpage %!\n");
}

TEST_F(DocumentTest, PostScriptWithoutAPageIsWarnedOf)
{
    const std::string name = path("a.ps");
    for (const char* content : {"%!PS\n1 pop\n", "%!PS\n1 pop quit\n", "%!PS\nstop\nshowpage\n"})
        EXPECT_EQ(Document::open(file("a.ps", content)).warnings(),
                  std::vector{name + ": puts out no page; the fax shows nothing of it"})
            << content;
    for (const char* content :
         {"%!PS\ncopypage\n", "%!PS\nsystemdict /showpage get exec quit\n",
          "%!PS\nshowpage <</PageSize [300 300]>> setpagedevice\n", "%!PS-Adobe-3.0 EPSF-3.0\n1 pop\n"})
        EXPECT_EQ(Document::open(file("a.ps", content)).warnings(), std::vector<std::string>()) << content;
}

TEST_F(DocumentTest, SaysHowManyPagesItHas)
{
    EXPECT_EQ(Document::open(file("a.ps", "%!PS\nshowpage showpage\n")).pages(), 2U);
    EXPECT_EQ(Document::open(file("a.ps", "%!PS\n1 pop\n")).pages(), 0U);
    const std::string figure = "%!PS-Adobe-3.0 EPSF-3.0\n";
    EXPECT_EQ(Document::open(file("a.eps", figure + "1 pop\n")).pages(), 1U);
    EXPECT_EQ(Document::open(file("a.eps", figure + "showpage\n")).pages(), 1U);
}

TEST_F(DocumentTest, PostScriptThatFailsIsRefused)
{
    EXPECT_EQ(refusal("%!PS\nshowpage showpage nonsense showpage\n"),
              "page 3 cannot be faxed: it uses a command that is not known (PostScript error /undefined in "
              "nonsense); print or save the document again and fax that");
    EXPECT_EQ(namesInFolder(), std::vector<std::string>{"refused"});
}

TEST_F(DocumentTest, OpeningStopsSoonWhenThatIsAskedFor)
{
    std::stop_source stop;
    stop.request_stop();
    GhostscriptBounds bounds;
    bounds.stop = stop.get_token();
    const std::string name = file("a.ps", "%!PS\n{ } loop\n");
    EXPECT_EQ(errorLine([&] { Document::open(name, bounds); }), name + ": the document was given up");
}

TEST_F(DocumentTest, ADiskWithoutRoomForTheCopyIsNamed)
{
    const std::string name = file("a.ps", "%!PS\nshowpage\n" + std::string(300'000, ' '));
    const std::string line = errorLine([&] {
        const FileSizeLimit limit(100'000);
        Document::open(name);
    });
    EXPECT_EQ(line, "the copy of " + name + " in " + folder() +
                        ": cannot be written: the file would exceed the size limit; raise the limit and try "
                        "again");
}

TEST_F(DocumentTest, KnowsItsOwnFileByAnyName)
{
    const std::string name = file("a.ps", "%!PS\nshowpage\n");
    std::filesystem::create_symlink(name, path("link.ps"));
    const Document document = Document::open(name);
    EXPECT_TRUE(document.isSameFile(name));
    EXPECT_TRUE(document.isSameFile(path("link.ps")));
    EXPECT_FALSE(document.isSameFile(file("b.ps", "%!PS\n")));
    EXPECT_FALSE(document.isSameFile(path("missing.ps")));
}

} // namespace
} // namespace quelm::tests
