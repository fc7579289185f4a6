// Puts pages into a file beside its place, and then gives it its name.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/tiff/page_writer.h"

#include "base/disk_room.h"
#include "base/system_reason.h"
#include "base/temporary_file.h"
#include "base/translation.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <span>
#include <utility>
#include <vector>

namespace quelm::device {
namespace {

/// More than any page is, in whatever way it is coded.
constexpr tmsize_t mostStripBytes = tmsize_t{256} << 20U;

} // namespace

PageWriter::PageWriter(std::string file, int pages)
    : file_(std::move(file)), pages_(pages), name_(temporaryName())
{
    const std::string folder = std::filesystem::path(file_).parent_path().string();
    folder_ = FileHandle(::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder_.isOpen())
        written_ = makeTemporaryFile(folder_.get(), name_);
    if (!written_.isOpen())
        fail(errno);
    errno = 0;
    tiff_ = openTiff("/proc/self/fd/" + std::to_string(written_.get()), "w");
    if (tiff_ == nullptr) {
        const int error = errno;
        remove();
        fail(error);
    }
}

PageWriter::~PageWriter() { remove(); }

void PageWriter::remove() noexcept
{
    if (!name_.empty())
        ::unlinkat(folder_.get(), name_.c_str(), 0);
}

void PageWriter::fail(int error) const
{
    // Without a reason of the system's, the library's own: such a file cannot be larger.
    if (error == 0) {
        requireRoomBehind(written_.get(), file_);
        throw Error(localized("%s: cannot be written: %s", file_, systemReason(EFBIG)));
    }
    failWriting(file_, error);
}

void PageWriter::beginPage(const PageFacts& facts)
{
    errno = 0;
    TIFF* tiff = tiff_.get();
    TIFFSetField(tiff, TIFFTAG_SUBFILETYPE, FILETYPE_PAGE);
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, facts.width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, facts.height);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 1);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_CCITT_T6);
    TIFFSetField(tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    TIFFSetField(tiff, TIFFTAG_XRESOLUTION, facts.across);
    TIFFSetField(tiff, TIFFTAG_YRESOLUTION, facts.down);
    TIFFSetField(tiff, TIFFTAG_PAGENUMBER, page_, pages_);
    TIFFSetField(tiff, TIFFTAG_SOFTWARE, "quelm-device");
}

void PageWriter::endPage()
{
    if (TIFFWriteDirectory(tiff_.get()) == 0)
        fail(errno);
    ++page_;
}

void PageWriter::copy(const PageReader& reader)
{
    TIFF* source = reader.handle();
    const PageFacts facts = reader.facts();
    if (!reader.isT6()) {
        widen(reader, facts.width);
        return;
    }
    reader.readRows([](auto) {});
    beginPage(facts);
    std::uint16_t fillOrder = FILLORDER_MSB2LSB;
    std::uint16_t meaning = PHOTOMETRIC_MINISWHITE;
    std::uint32_t rowsPerStrip = 0;
    TIFFGetFieldDefaulted(source, TIFFTAG_FILLORDER, &fillOrder);
    TIFFGetFieldDefaulted(source, TIFFTAG_PHOTOMETRIC, &meaning);
    TIFFGetFieldDefaulted(source, TIFFTAG_ROWSPERSTRIP, &rowsPerStrip);
    TIFFSetField(tiff_.get(), TIFFTAG_FILLORDER, fillOrder);
    TIFFSetField(tiff_.get(), TIFFTAG_PHOTOMETRIC, meaning);
    TIFFSetField(tiff_.get(), TIFFTAG_ROWSPERSTRIP, std::min(rowsPerStrip, facts.height));
    std::vector<std::uint8_t> strip;
    for (std::uint32_t number = 0; number < TIFFNumberOfStrips(source); ++number) {
        const auto size = static_cast<tmsize_t>(TIFFRawStripSize64(source, number));
        if (size < 0 || size > mostStripBytes)
            reader.failDamaged();
        strip.resize(static_cast<std::size_t>(size));
        if (TIFFReadRawStrip(source, number, strip.data(), size) != size)
            reader.failDamaged();
        if (TIFFWriteRawStrip(tiff_.get(), number, strip.data(), size) != size)
            fail(errno);
    }
    endPage();
}

void PageWriter::widen(const PageReader& reader, std::uint32_t width)
{
    PageFacts facts = reader.facts();
    facts.width = width;
    beginPage(facts);
    TIFFSetField(tiff_.get(), TIFFTAG_FILLORDER, FILLORDER_MSB2LSB);
    TIFFSetField(tiff_.get(), TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
    TIFFSetField(tiff_.get(), TIFFTAG_ROWSPERSTRIP, facts.height);
    std::uint32_t number = 0;
    std::vector<std::uint8_t> row((width + 7) / 8);
    reader.readRows([&](std::span<const std::uint8_t> narrow) {
        std::ranges::fill(row, std::uint8_t{0}); // the library may change what it is given
        std::ranges::copy(narrow, row.begin());
        if (TIFFWriteScanline(tiff_.get(), row.data(), number++) != 1)
            fail(errno);
    });
    endPage();
}

void PageWriter::finish()
{
    errno = 0;
    if (TIFFFlush(tiff_.get()) == 0)
        fail(errno);
    tiff_.reset();
    const std::string name = std::filesystem::path(file_).filename().string();
    if (::fsync(written_.get()) != 0 ||
        ::renameat(folder_.get(), name_.c_str(), folder_.get(), name.c_str()) != 0)
        fail(errno);
    name_.clear();
    ::fsync(folder_.get());
}

} // namespace quelm::device
