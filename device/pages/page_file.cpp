// Draws pages, and brings each to the width of a fax.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/pages/page_file.h"

#include "base/error.h"
#include "base/translation.h"
#include "device/pages/page_drawing.h"
#include "device/tiff/page_reader.h"
#include "device/tiff/page_writer.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <map>
#include <memory>
#include <set>
#include <tuple>

namespace quelm::device {
namespace {

constexpr std::uint32_t faxWidth = 1728;
constexpr double millimetersPerInch = 25.4;

long millimeters(std::uint32_t dots, double density)
{
    return std::lround(dots * millimetersPerInch / density);
}

/// Refuses a page that no machine has paper for.
void requireSize(const PageFacts& page, int number)
{
    const long across = millimeters(page.width, page.across);
    const long down = millimeters(page.height, page.down);
    if (across > longestSide || down > longestSide)
        failTooLarge(number, across, down);
}

PageReader openPages(const std::string& file)
{
    // Translators: stands ahead of "page 2 is damaged".
    return PageReader(file, localized("the document as it was rendered"));
}

std::string densityOption(const PageDensity& density)
{
    return "-r" + std::to_string(density.across) + "x" + std::to_string(density.down);
}

/// The size in dots that a page gets which is too wide. Its shape is that of the page, upright or turned, so
/// that nothing of it is stretched, moved or made larger.
struct FittedSize {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    bool operator<(const FittedSize& other) const
    {
        return std::tie(width, height) < std::tie(other.width, other.height);
    }
};

FittedSize fittedSize(const PageFacts& page)
{
    constexpr double leastUpright = 0.85; // as large as it is
    const auto dots = [](double count) {
        return std::max<std::uint32_t>(static_cast<std::uint32_t>(std::lround(count)), 1);
    };
    const double upright = static_cast<double>(faxWidth) / page.width;
    const double across = page.width / page.across; // inches
    const double down = page.height / page.down;
    if (across <= down || upright >= leastUpright)
        return {faxWidth, dots(page.height * upright)};
    const double turned = std::min(1.0, faxWidth / (down * page.across));
    return {dots(down * page.across * turned), dots(across * page.down * turned)};
}

/// A document drawn once more for all pages that are too wide and get the same size.
struct Fitting {
    Fitting(const FileHandle& postScript, const PageDensity& density, const FittedSize& size,
            const std::string& tiff, const PageBounds& bounds)
        : drawn(postScript,
                {densityOption(density),
                 "-g" + std::to_string(size.width) + "x" + std::to_string(size.height), "-dPSFitPage"},
                tiff, bounds),
          pages(openPages(drawn.file()))
    {
    }

    DrawnPages drawn;
    PageReader pages;
};

/// Looks at the sizes of all pages; those that pages of a fax get which are too wide, by the pages' numbers.
std::map<int, FittedSize> checkSizes(const std::string& file)
{
    std::map<int, FittedSize> fitted;
    PageReader reader = openPages(file);
    int number = 1;
    do {
        const PageFacts page = reader.facts();
        requireSize(page, number);
        if (page.width > faxWidth)
            fitted[number] = fittedSize(page);
        ++number;
    } while (reader.next());
    return fitted;
}

/// Refuses so many that drawing the document for each would take all the time.
std::set<FittedSize> differentSizes(const std::map<int, FittedSize>& fitted)
{
    constexpr int most = 8;
    std::set<FittedSize> sizes;
    for (const auto& [number, size] : fitted)
        sizes.insert(size);
    if (sizes.size() > most)
        throw Error(
            localized("the document has pages of more than %d sizes that are wider than a fax", most));
    return sizes;
}

/// What is left of a time that began at `begun`, in whole seconds.
std::chrono::milliseconds whatIsLeft(std::chrono::milliseconds time,
                                     std::chrono::steady_clock::time_point begun)
{
    using std::chrono::seconds;
    const auto left = time - (std::chrono::steady_clock::now() - begun);
    return std::max(std::chrono::floor<seconds>(left), seconds(1));
}

} // namespace

int renderPages(const std::string& file, std::uint64_t begin, std::uint64_t end, const PageDensity& density,
                const std::string& tiff, const PageBounds& bounds)
{
    const auto begun = std::chrono::steady_clock::now();
    const FileHandle postScript = copyOfPart(file, begin, end);
    const DrawnPages drawn(postScript, {densityOption(density)}, tiff, bounds);
    PageReader pages = openPages(drawn.file());
    const std::map<int, FittedSize> fitted = checkSizes(drawn.file());
    std::map<FittedSize, std::unique_ptr<Fitting>> fittings;
    for (const FittedSize& size : differentSizes(fitted)) {
        PageBounds left = bounds;
        left.ghostscript.timeLimit = whatIsLeft(bounds.ghostscript.timeLimit, begun);
        const auto& fitting = fittings[size] =
            std::make_unique<Fitting>(postScript, density, size, tiff, left);
        if (fitting->pages.count() != pages.count())
            throw Error(localized("the document shows other pages when they are made smaller"));
    }
    PageWriter writer(tiff, pages.count());
    int number = 1;
    bool more = true;
    while (more) {
        const auto found = fitted.find(number++);
        const PageReader& page = found == fitted.end() ? pages : fittings.at(found->second)->pages;
        if (page.facts().width < faxWidth)
            writer.widen(page, faxWidth);
        else
            writer.copy(page);
        more = pages.next();
        for (const auto& [size, fitting] : fittings)
            (void)fitting->pages.next();
    }
    writer.finish();
    return pages.count();
}

int printPages(const std::string& file, std::uint64_t begin, std::uint64_t end, const std::string& tiff,
               const PageBounds& bounds)
{
    const FileHandle postScript = copyOfPart(file, begin, end);
    const DrawnPages drawn(postScript, {densityOption({.across = 300, .down = 300}), "-dAdjustWidth=0"}, tiff,
                           bounds);
    (void)checkSizes(drawn.file());
    PageReader pages = openPages(drawn.file());
    PageWriter writer(tiff, pages.count());
    do
        writer.copy(pages);
    while (pages.next());
    writer.finish();
    return pages.count();
}

} // namespace quelm::device
