// Turns PDF into PostScript with Ghostscript.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/documents/pdf_conversion.h"

#include "base/error.h"
#include "base/process.h"
#include "base/texts.h"
#include "base/translation.h"

#include <cctype>
#include <sstream>
#include <string_view>

namespace quelm {
namespace {

/// How Ghostscript's messages about one PDF read.
struct Diagnosis {
    bool processedPage = false;
    bool processedNothing = false;
    bool needsPassword = false;
    bool hasNoPages = false;
    std::string firstFault; ///< the first fault that was found in the file
};

bool contains(std::string_view line, std::string_view part)
{
    return line.find(part) != std::string_view::npos;
}

Diagnosis diagnose(const std::string& messages)
{
    Diagnosis diagnosis;
    std::istringstream lines(messages);
    bool inFaults = false;
    for (std::string line; std::getline(lines, line);) {
        constexpr std::string_view page = "Page ";
        if (line.starts_with(page) && line.size() > page.size() &&
            std::isdigit(static_cast<unsigned char>(line[page.size()])) != 0)
            diagnosis.processedPage = true;
        diagnosis.processedNothing |=
            contains(line, "No pages will be processed") || contains(line, "Couldn't initialise file");
        diagnosis.needsPassword |= contains(line, "password");
        diagnosis.hasNoPages |= contains(line, "document has no pages");

        // The faults are listed one a line, indented by a tab, below a heading.
        if (inFaults && line.starts_with('\t') && diagnosis.firstFault.empty())
            diagnosis.firstFault = trimmed(line);
        inFaults = contains(line, "errors were encountered") || (inFaults && line.starts_with('\t'));
    }
    return diagnosis;
}

/// The messages are kept up to a size from their end, so that in a long list of faults the lines that
/// name the pages can be missing.
bool areWhole(const std::string& messages) { return contains(messages, "Copyright"); }

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

ConvertedPdf convertPdf(const FileHandle& pdf, const std::string& name, const PdfConversion& conversion)
{
    ConvertedPdf converted;
    converted.postScript = makeUnnamedFile();

    ProcessRequest request;
    // No -q: without the lines that name the pages nothing tells a PDF that cannot be opened, for which
    // Ghostscript puts out one empty page and ends with status 0, from one that has one.
    request.arguments = {
        conversion.ghostscript, "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=ps2write", "-sstdout=%stderr",
        "-sOutputFile=%stdout", "-"};
    request.inputFile = "/proc/self/fd/" + std::to_string(pdf.get());
    request.outputDescriptor = converted.postScript.get();
    request.timeLimit = conversion.timeLimit;
    request.stop = conversion.stop;

    ProcessResult result;
    try {
        result = runProcess(request);
    } catch (const Error& error) {
        throw Error(localized("%s: the PDF cannot be turned into PostScript: %s", name, error.what()));
    }

    const Diagnosis diagnosis = diagnose(result.errors);
    const bool noPage = !diagnosis.processedPage && areWhole(result.errors);
    if (result.exitStatus != 0 || diagnosis.processedNothing || noPage)
        fail(name, diagnosis, result.exitStatus);
    if (!diagnosis.firstFault.empty())
        converted.warning =
            localized("%s: the PDF is damaged and was mended (%s); check the pages of the fax", name,
                      diagnosis.firstFault);
    return converted;
}

} // namespace quelm
