// Fills the component's page, and reads what prints of one.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "page_support.h"

#include "base/process.h"
#include "base/texts.h"
#include "tests/driver/jobs/job_support.h"
#include "tests/support/build_paths.h"
#include "tests/support/temporary_folder.h"

#include <algorithm>
#include <cmath>
#include <regex>
#include <sstream>
#include <stdexcept>

namespace quelm::tests {
namespace {

std::string runGhostscriptOn(const std::string& program, const std::vector<std::string>& options)
{
    const TemporaryFolder folder;
    const std::string path = writeFile(folder / "page.ps", program);
    ProcessRequest request;
    request.arguments = {"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE"};
    request.arguments.insert(request.arguments.end(), options.begin(), options.end());
    request.arguments.push_back(path);
    const ProcessResult result = runProcess(request);
    if (result.exitStatus != 0 || !result.errors.empty())
        throw std::runtime_error("Ghostscript: " + result.output + result.errors);
    return result.output;
}

} // namespace

const CoverPageTemplate& realTemplate()
{
    static const CoverPageTemplate texts{
        contentOf(build_paths::inProject("component/output/cover_page_header.txt")),
        contentOf(build_paths::inProject("component/output/cover_page.ps"))};
    return texts;
}

CoverValues typedValues(const std::string& name, const std::string& note)
{
    return {name, "", "", "", "", "", "", "", "", "", " (" + note + ") ", "2024", "03", "05", "14", "07"};
}

std::string componentsPage(const CoverValues& values)
{
    std::string page;
    auto value = values.begin();
    const std::string& format = realTemplate().header;
    for (std::size_t at = 0; at < format.size(); ++at)
        if (format[at] != '%')
            page += format[at];
        else if (format[++at] == '%')
            page += '%';
        else
            page += *value++;
    return page + realTemplate().trailer;
}

CoverPage pageFor(const CoverValues& values) { return makeCoverPage(componentsPage(values), realTemplate()); }

std::vector<std::vector<std::string>> printedTexts(const std::string& postScript)
{
    static const std::regex labels(
        "^(Fax Cover Sheet|To:|From:|(Name|Organization|Voice|Fax|E.{1,3}Mail|Date|Note):)");
    const TemporaryFolder folder;
    const Rendering rendering = render(writeFile(folder / "pages.ps", postScript));
    if (rendering.exitStatus != 0 || !rendering.messages.empty())
        throw std::runtime_error("Ghostscript: " + rendering.messages);
    std::vector<std::vector<std::string>> pages;
    for (const auto& page : rendering.pages) {
        std::istringstream lines(page);
        pages.emplace_back();
        for (std::string line; std::getline(lines, line);) {
            const std::string text(trimmed(std::regex_replace(std::string(trimmed(line)), labels, "")));
            if (!text.empty())
                pages.back().push_back(text);
        }
    }
    return pages;
}

std::string ghostscriptOutput(const std::string& program)
{
    return runGhostscriptOn(program, {"-dNODISPLAY"});
}

InkBox difference(const std::string& one, const std::string& other)
{
    constexpr std::size_t width = 1224; // at 144 pixels to the inch
    constexpr std::size_t height = 1584;
    const auto pixels = [](const std::string& program) {
        const TemporaryFolder folder;
        runGhostscriptOn(program,
                         {"-sDEVICE=pgmraw", "-r144", "-g1224x1584", "-sOutputFile=" + (folder / "%d")});
        const std::string picture = contentOf(folder / "1");
        return picture.substr(picture.size() - width * height);
    };
    const std::string first = pixels(one);
    const std::string second = pixels(other);
    InkBox box{width, height, 0, 0};
    for (std::size_t at = 0; at < first.size(); ++at) {
        if (first[at] == second[at])
            continue;
        const auto x = static_cast<double>(at % width) / 2;
        const auto y = (static_cast<double>(height) - std::floor(static_cast<double>(at) / width)) / 2;
        box = {std::min(box.left, x), std::min(box.bottom, y), std::max(box.right, x), std::max(box.top, y)};
    }
    if (box.right == 0)
        throw std::runtime_error("the pages are alike");
    return box;
}

} // namespace quelm::tests
