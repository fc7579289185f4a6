// Looks at pages through the TIFF library.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/tiff/page_reader.h"

#include "base/error.h"
#include "base/translation.h"

#include <vector>

namespace quelm::device {
namespace {

/// Not mapped into memory: of a file that becomes shorter meanwhile that would be a signal, and no error.
constexpr char readMode[] = "rm";

template <typename Value>
Value field(TIFF* tiff, std::uint32_t tag)
{
    Value value{};
    TIFFGetFieldDefaulted(tiff, tag, &value);
    return value;
}

} // namespace

PageReader::PageReader(const std::string& file, const std::string& shownName)
    : shownName_(shownName.empty() ? file : shownName), tiff_(openTiff(file, readMode, messages_.get()))
{
    if (tiff_ == nullptr)
        throw Error(localized("%s: the pages cannot be read; they are no TIFF file", shownName_));
    count_ = static_cast<int>(TIFFNumberOfDirectories(tiff_.get()));
}

bool PageReader::next()
{
    if (page_ == count_)
        return false;
    ++page_;
    if (TIFFReadDirectory(tiff_.get()) == 0)
        failDamaged();
    return true;
}

void PageReader::failDamaged() const { throw Error(localized("%s: page %d is damaged", shownName_, page_)); }

PageFacts PageReader::facts() const
{
    PageFacts facts;
    facts.width = field<std::uint32_t>(tiff_.get(), TIFFTAG_IMAGEWIDTH);
    facts.height = field<std::uint32_t>(tiff_.get(), TIFFTAG_IMAGELENGTH);
    facts.across = static_cast<double>(field<float>(tiff_.get(), TIFFTAG_XRESOLUTION));
    facts.down = static_cast<double>(field<float>(tiff_.get(), TIFFTAG_YRESOLUTION));
    if (field<std::uint16_t>(tiff_.get(), TIFFTAG_BITSPERSAMPLE) != 1 ||
        field<std::uint16_t>(tiff_.get(), TIFFTAG_SAMPLESPERPIXEL) != 1 || TIFFIsTiled(tiff_.get()) != 0)
        failDamaged();
    return facts;
}

bool PageReader::isT6() const
{
    return field<std::uint16_t>(tiff_.get(), TIFFTAG_COMPRESSION) == COMPRESSION_CCITT_T6;
}

void PageReader::readRows(const std::function<void(std::span<const std::uint8_t>)>& take) const
{
    const PageFacts page = facts();
    const bool isInverted = field<std::uint16_t>(tiff_.get(), TIFFTAG_PHOTOMETRIC) == PHOTOMETRIC_MINISBLACK;
    const std::uint32_t spareBits = (8 - page.width % 8) % 8;
    // The decoder makes something of damaged rows, and says so.
    const int messagesBefore = *messages_;
    std::vector<std::uint8_t> row(static_cast<std::size_t>(TIFFScanlineSize(tiff_.get())));
    for (std::uint32_t number = 0; number < page.height; ++number) {
        if (TIFFReadScanline(tiff_.get(), row.data(), number) != 1 || *messages_ != messagesBefore)
            failDamaged();
        if (isInverted)
            for (std::uint8_t& byte : row)
                byte = static_cast<std::uint8_t>(~byte);
        row.back() = static_cast<std::uint8_t>((row.back() >> spareBits) << spareBits);
        take(row);
    }
}

int pagesInFile(const std::string& file)
{
    const TiffHandle tiff = openTiff(file, readMode);
    return tiff == nullptr ? 0 : static_cast<int>(TIFFNumberOfDirectories(tiff.get()));
}

} // namespace quelm::device
