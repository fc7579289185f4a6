// Runs Ghostscript, and words what it says of a document.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/pages/page_drawing.h"

#include "base/disk_room.h"
#include "base/error.h"
#include "base/file_io.h"
#include "base/system_reason.h"
#include "base/temporary_file.h"
#include "base/texts.h"
#include "base/translation.h"
#include "device/tiff/page_reader.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <sstream>
#include <string_view>
#include <utility>

namespace quelm::device {
namespace {

/// What the program ahead of a document says of it. A document cannot say the same: the key is another one in
/// each run, and nothing shows it.
class Marks {
public:
    explicit Marks(std::string key) : key_(std::move(key)) {}

    /// Ends a document that shows pages for ever behind the last that is allowed, and one with a page that is
    /// too large ahead of that page. It leaves all else as it is.
    std::string program(int mostPages) const
    {
        const std::string most = std::to_string(mostPages);
        // A millimeter is 360/127 points; half of one is rounded down to the limit.
        const std::string longest = std::to_string((2 * longestSide + 1) * 180) + " 127 div";
        const std::string say = "(\\n" + key_ + " ";
        return "<< /EndPage { exch pop 2 ne dup { currentpagedevice /PageCount get " + most + " ge { " + say +
               "pages\\n) print flush quit } if } if } bind executeonly "
               "/BeginPage { 1 add currentpagedevice /PageSize get aload pop 2 copy " +
               longest + " gt exch " + longest + " gt or { " + say +
               "size ) print 3 -1 roll 20 string cvs print ( ) print exch 2 { dup 1000000 gt { pop 1000000 } "
               "if 127 mul 360 div round cvi 20 string cvs print ( ) print } repeat (\\n) print flush quit } "
               "{ pop pop pop } ifelse } bind executeonly >> setpagedevice";
    }

    /// Throws when there is such a mark in Ghostscript's messages.
    void read(const std::string& messages, int mostPages) const
    {
        if (messages.find("\n" + key_ + " pages\n") != std::string::npos)
            failTooMany(mostPages);
        const std::string start = "\n" + key_ + " size ";
        const auto found = messages.find(start);
        if (found == std::string::npos)
            return;
        std::istringstream numbers(messages.substr(found + start.size(), 100));
        int page = 0;
        long across = 0;
        long down = 0;
        numbers >> page >> across >> down;
        failTooLarge(page, across, down);
    }

    [[noreturn]] static void failTooMany(int mostPages)
    {
        throw Error(localized("the document has more than %d pages", mostPages));
    }

private:
    std::string key_;
};

/// A file's name as Ghostscript takes it, which puts a page's number in place of "%d".
std::string outputName(const std::string& file)
{
    std::string name;
    for (const char character : file)
        name.append(character == '%' ? 2 : 1, character);
    return name;
}

[[noreturn]] void failOnPage(int page, const std::string& reason)
{
    // Translators: a page's number, and what is wrong with it, such as "PostScript error /undefined in foo".
    throw Error(localized("page %d cannot be rendered: %s", page, reason));
}

/// What Ghostscript's error line says without its first word.
std::string postScriptError(const std::string& messages)
{
    constexpr std::string_view start = "Error: ";
    const std::string line = ghostscriptError(messages);
    return line.empty() ? line : shownText(std::string_view(line).substr(start.size()), 100);
}

/// How many pages of a file are whole; what a run leaves that failed may end within one.
int wholePages(const std::string& file)
{
    const int pages = pagesInFile(file);
    if (pages == 0)
        return 0;
    try {
        PageReader reader(file);
        while (reader.next()) {
        }
        reader.readRows([](auto) {});
        return pages;
    } catch (const Error&) {
        return pages - 1;
    }
}

} // namespace

void failTooLarge(int page, long across, long down)
{
    throw Error(localized("page %d is too large: %d x %d mm, and no side may be longer than %d mm", page,
                          across, down, longestSide));
}

FileHandle copyOfPart(const std::string& file, std::uint64_t begin, std::uint64_t end)
{
    const FileHandle source(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
    if (!source.isOpen())
        throw Error(localized("%s: cannot be read: %s", file, systemReason(errno)));
    FileHandle copy = makeUnnamedFile();
    std::string block(std::size_t{256} * 1024, '\0');
    while (begin < end) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(block.size(), end - begin));
        const auto count = readFully(source.get(), block.data(), wanted, static_cast<long long>(begin), file);
        if (count < wanted)
            throw Error(localized("%s: is shorter than it was when it was taken", file));
        try {
            writeAll(copy.get(), std::string_view(block).substr(0, count), temporaryFolder());
        } catch (const Error&) {
            requireRoomBehind(copy.get(), temporaryFolder());
            throw;
        }
        begin += count;
    }
    return copy;
}

DrawnPages::DrawnPages(const FileHandle& postScript, const std::vector<std::string>& options,
                       const std::string& target, const PageBounds& bounds)
    : name_(temporaryName())
{
    const std::filesystem::path folder = std::filesystem::absolute(target).parent_path();
    folder_ = FileHandle(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder_.isOpen()) {
        sweepTemporaryFiles(folder_.get());
        lock_ = makeTemporaryFile(folder_.get(), name_);
    }
    if (!lock_.isOpen())
        failWriting(target, errno);
    file_ = (folder / name_).string();
    try {
        draw(postScript, options, bounds);
    } catch (...) {
        ::unlinkat(folder_.get(), name_.c_str(), 0);
        throw;
    }
}

DrawnPages::~DrawnPages() { ::unlinkat(folder_.get(), name_.c_str(), 0); }

void DrawnPages::draw(const FileHandle& postScript, const std::vector<std::string>& options,
                      const PageBounds& bounds) const
{
    const Marks marks(temporaryName());
    std::vector<std::string> arguments = {"-q", "-sDEVICE=tiffg4", "-sOutputFile=" + outputName(file_)};
    arguments.insert(arguments.end(), options.begin(), options.end());
    // By this name Ghostscript reads it in blocks, by its own ("-") byte by byte.
    arguments.insert(arguments.end(), {"-c", marks.program(bounds.mostPages), "-f", "/proc/self/fd/0"});

    GhostscriptStreams streams;
    streams.inputFile = "/proc/self/fd/" + std::to_string(postScript.get());
    streams.takeOutput = [](std::string_view) {}; // whatever a document writes there is no part of its pages
    const std::string folder = std::filesystem::path(file_).parent_path().string();
    RoomWatch watch(folder);
    ProcessResult result;
    try {
        result = runGhostscript(bounds.ghostscript, arguments, streams);
    } catch (const Error& error) {
        watch.require();
        requireRoomBehind(lock_.get(), folder);
        throw Error(localized("the document cannot be rendered: %s", error.what()));
    }
    watch.require(); // a document may go on when a page could not be written
    marks.read(result.errors, bounds.mostPages);
    int pages = pagesInFile(file_);
    if (pages > bounds.mostPages)
        Marks::failTooMany(bounds.mostPages);
    if (result.exitStatus != 0) {
        pages = wholePages(file_);
        requireRoomBehind(lock_.get(), folder);
        const std::string error = postScriptError(result.errors);
        if (error.empty())
            failOnPage(pages + 1, localized("Ghostscript ended with status %d", result.exitStatus));
        // Translators: PostScript's names of an error and of a command, such as "/undefined in foo".
        failOnPage(pages + 1, localized("PostScript error %s", error));
    }
    if (pages == 0)
        throw Error(localized("the document has no page"));
}

} // namespace quelm::device
