// Turns PDF into PostScript with Ghostscript.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/documents/pdf_conversion.h"

#include "base/error.h"
#include "base/system_reason.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/documents/file_sink.h"
#include "driver/documents/page_tally.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <sstream>
#include <string_view>

namespace quelm {
namespace {

/// How Ghostscript's messages about one PDF read.
struct Diagnosis {
    long pages = 0; ///< how many there are, as far as they were reached
    bool processedNothing = false;
    bool needsPassword = false;
    bool hasNoPages = false;
    bool couldNotWrite = false;
    std::string firstFault; ///< the first fault that was found in the file
};

bool contains(std::string_view line, std::string_view part)
{
    return line.find(part) != std::string_view::npos;
}

/// The number behind `words` in the line; 0 where they do not stand at its start or no number follows.
long numberBehind(std::string_view words, std::string_view line)
{
    long number = 0;
    if (line.starts_with(words))
        std::from_chars(line.data() + words.size(), line.data() + line.size(), number);
    return number;
}

/// Whether a line tells that an image, a font or a stream could not be read whole.
bool losesSomething(std::string_view line)
{
    static constexpr std::array<std::string_view, 4> losses{
        "recoverable image error", "cannot process embedded stream", "ignoring zlib error", "FATAL ERROR"};
    return std::ranges::any_of(losses, [line](std::string_view loss) { return contains(line, loss); });
}

Diagnosis diagnose(const std::string& messages)
{
    Diagnosis diagnosis;
    std::istringstream lines(messages);
    bool inFaults = false;
    for (std::string line; std::getline(lines, line);) {
        diagnosis.pages = std::max({diagnosis.pages, numberBehind("Page ", line),
                                    numberBehind("Processing pages 1 through ", line)});
        diagnosis.processedNothing |=
            contains(line, "No pages will be processed") || contains(line, "Couldn't initialise file");
        diagnosis.needsPassword |= contains(line, "password");
        diagnosis.hasNoPages |= contains(line, "document has no pages");
        diagnosis.couldNotWrite |= contains(line, "ioerror") && contains(line, "on closing");

        // The faults are listed one a line, indented by a tab, below a heading. Some that change what the
        // pages show are among the warnings, or stand alone.
        const bool isListed = line.starts_with('\t');
        if (((inFaults && isListed) || losesSomething(line)) && diagnosis.firstFault.empty())
            diagnosis.firstFault = trimmed(line);
        inFaults = contains(line, "errors were encountered") || (inFaults && isListed);
    }
    return diagnosis;
}

[[noreturn]] void fail(const std::string& name, const Diagnosis& diagnosis, int exitStatus)
{
    if (diagnosis.needsPassword)
        throw Error(
            localized("%s: the PDF is protected by a password; save it without one and fax that", name));
    if (diagnosis.hasNoPages)
        throw Error(localized("%s: the PDF has no pages", name));
    std::string reason = diagnosis.firstFault;
    if (reason.empty())
        reason = localized("Ghostscript ended with status %d", exitStatus);
    throw Error(localized("%s: the PDF is damaged (%s); open and save it again, and fax that", name, reason));
}

} // namespace

ConvertedPdf convertPdf(const FileHandle& pdf, const std::string& name, const GhostscriptBounds& bounds)
{
    ConvertedPdf converted;
    converted.postScript = makeUnnamedFile();

    GhostscriptStreams streams;
    streams.inputFile = "/proc/self/fd/" + std::to_string(pdf.get());
    // Ghostscript does not notice when its last bytes find no room: we write them ourselves.
    PageTally tally;
    const std::string target = localized("the file for it in %s", temporaryFolder());
    FileSink sink(converted.postScript, target);
    std::uint64_t size = 0;
    streams.takeOutput = [&](std::string_view bytes) {
        size += bytes.size();
        if (size > bounds.fileLimit)
            throw Error(localized("%s: cannot be written: %s", target, systemReason(EFBIG)));
        tally.append(bytes);
        sink.write(bytes);
    };

    ProcessResult result;
    try {
        // No -q: without the lines that name the pages nothing tells a PDF that cannot be opened, for which
        // Ghostscript puts out one empty page and ends with status 0, from one that has one. Given by a name,
        // the PDF is read where it is; from standard input Ghostscript would copy it first.
        result =
            runGhostscript(bounds, {"-sDEVICE=ps2write", "-sOutputFile=%stdout", "/proc/self/fd/0"}, streams);
    } catch (const Error& error) {
        throw Error(localized("%s: the PDF cannot be turned into PostScript: %s", name, error.what()));
    }

    const Diagnosis diagnosis = diagnose(result.errors);
    if (diagnosis.couldNotWrite)
        throw Error(
            localized("%s: the PDF cannot be turned into PostScript: the disk is full, there is no room "
                      "for temporary files in %s; make room there, or set TMPDIR to a folder with more",
                      name, temporaryFolder()));
    if (result.exitStatus != 0 || diagnosis.processedNothing || diagnosis.pages == 0)
        fail(name, diagnosis, result.exitStatus);
    const long wholePages = tally.atEnd() ? tally.pages() : std::max(tally.pages() - 1, 0L);
    if (wholePages < diagnosis.pages)
        // Translators: the document, and how many of how many pages.
        throw Error(localized("%s: only %d of its %d pages could be turned into PostScript; open and save it "
                              "again, and fax that",
                              name, wholePages, diagnosis.pages));
    converted.pages = static_cast<std::size_t>(wholePages);
    if (!diagnosis.firstFault.empty())
        converted.warning =
            localized("%s: the PDF is damaged and was mended (%s); check the pages of the fax", name,
                      diagnosis.firstFault);
    return converted;
}

} // namespace quelm
