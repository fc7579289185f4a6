// Makes pages and records.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/device/display/page_support.h"

#include <tiffio.h>

#include <stdexcept>

namespace quelm::tests {

using namespace device;

std::string writePages(const std::string& path, const std::vector<DrawnPage>& pages)
{
    TIFF* const tiff = TIFFOpen(path.c_str(), "w");
    if (tiff == nullptr)
        throw std::runtime_error("cannot write " + path);
    for (const auto& page : pages) {
        TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, page.across);
        TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, page.down);
        TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 1);
        TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
        TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4);
        TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
        TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, page.down);
        TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
        TIFFSetField(tiff, TIFFTAG_XRESOLUTION, 204.0F);
        TIFFSetField(tiff, TIFFTAG_YRESOLUTION, page.dotsDown);
        std::vector<std::uint8_t> line((page.across + 7) / 8);
        for (std::uint32_t y = 0; y < page.down; ++y) {
            line.assign(line.size(), y < page.blackLines ? 0xFF : 0);
            TIFFWriteScanline(tiff, line.data(), y, 0);
        }
        TIFFWriteDirectory(tiff);
    }
    TIFFClose(tiff);
    return path;
}

Moment momentAt(long long seconds) { return Moment(std::chrono::seconds(seconds)); }

namespace {

RecipientRecord recipient(int position, const std::string& number, RecipientState state, int attempts)
{
    RecipientRecord record;
    record.position = position;
    record.number = number;
    record.state = state;
    record.attempts = attempts;
    record.lastCallAt = momentAt(1795383790 + 60LL * position);
    record.lastDuration = std::chrono::seconds(44 + position);
    return record;
}

CallRecord callOf(int number, int position, int attempt)
{
    CallRecord call;
    call.number = number;
    call.job = 12;
    call.position = position;
    call.attempt = attempt;
    call.state = CallState::ended;
    call.begunAt = momentAt(1795383700 + 60LL * number);
    call.duration = std::chrono::seconds(30);
    return call;
}

} // namespace

JobRecord sampleJob()
{
    JobRecord job;
    job.number = 12;
    job.state = JobState::done;
    job.receivedAt = momentAt(1795383790);
    job.from = "127.0.0.1:40112";
    job.pages = 3;
    job.reading.title = "Sample letter";
    job.reading.isFax = true;
    job.reading.coverSheet = true;
    job.reading.confirmationSheet = true;
    job.reading.resolution = Resolution::fine;
    job.reading.creditCard = "4000123412341234";
    job.recipients = {recipient(1, "555-010-4477", RecipientState::sent, 2),
                      recipient(2, "9,1 (555) 010-4478", RecipientState::sent, 1),
                      recipient(3, "+30 21 0555 0123", RecipientState::failed, 1)};
    job.recipients[0].result = job.recipients[1].result = "sent";
    job.recipients[0].pagesSent = job.recipients[1].pagesSent = 3;
    job.recipients[1].mailbox = "42";
    job.recipients[2].result = "the other machine hung up";
    job.recipients[2].code = 17;
    job.recipients[2].pagesSent = 1;
    job.hasReport = true;
    return job;
}

std::vector<CallRecord> sampleCalls()
{
    CallRecord busy = callOf(31, 1, 1);
    busy.result = "busy";
    busy.code = -1;
    CallRecord sent = callOf(34, 1, 2);
    sent.result = "sent";
    sent.libraryWords = "OK";
    sent.pagesSent = sent.pagesKept = 3;
    sent.bitRate = 14400;
    sent.errorCorrection = true;
    sent.receiver = "5550104477";
    sent.dialled = "5550104477";
    sent.identity = "+1 555 010 4477";
    CallRecord other = sent;
    other.number = 32;
    other.position = 2;
    other.attempt = 1;
    other.receiver = "15550104478";
    other.identity.clear();
    CallRecord failed = callOf(33, 3, 1);
    failed.result = "the other machine hung up";
    failed.libraryWords = "The call dropped prematurely";
    failed.code = 17;
    failed.pagesSent = failed.pagesKept = 1;
    failed.bitRate = 4800;
    failed.receiver = "0030210555123";
    return {busy, other, failed, sent};
}

} // namespace quelm::tests
