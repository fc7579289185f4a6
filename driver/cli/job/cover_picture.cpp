// Has Ghostscript draw the cover page, and keeps the picture until it is whole.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/cover_picture.h"

#include "base/atomic_file.h"
#include "base/error.h"
#include "base/file_io.h"
#include "base/ghostscript/ghostscript.h"
#include "base/ghostscript/png_stream.h"
#include "base/texts.h"
#include "base/translation.h"
#include "base/write_target.h"
#include "driver/cli/job/write_document.h"
#include "driver/documents/file_sink.h"
#include "driver/jobs/job_writer.h"

#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <optional>
#include <string_view>

namespace quelm {
namespace {

/// The picture that Ghostscript makes of the PostScript in the file.
std::string drawn(const FileHandle& postScript)
{
    GhostscriptBounds bounds;
    bounds.timeLimit = std::chrono::minutes(1);
    constexpr std::size_t largest = std::size_t{64} << 20U;
    PngStream pictures(largest);
    std::optional<std::string> picture;
    GhostscriptStreams streams;
    streams.inputFile = "/proc/self/fd/" + std::to_string(postScript.get());
    streams.takeOutput = [&](std::string_view bytes) {
        pictures.append(bytes);
        if (!picture)
            picture = pictures.next();
    };
    // The page is of 8.5 by 11 inches and does not say so: what Ghostscript would take instead is the
    // machine's own setting.
    const auto result = runGhostscript(
        bounds,
        {"-q", "-sDEVICE=pnggray", "-dTextAlphaBits=4", "-dGraphicsAlphaBits=4", "-r150",
         "-dDEVICEWIDTHPOINTS=612", "-dDEVICEHEIGHTPOINTS=792", "-sOutputFile=%stdout", "/proc/self/fd/0"},
        streams);
    if (const auto error = ghostscriptError(result.errors); result.exitStatus != 0)
        throw Error(error.empty() ? localized("Ghostscript ended with status %d", result.exitStatus) : error);
    if (!picture || !pictures.atEnd())
        throw Error(localized("what Ghostscript made of the page is no picture"));
    return *picture;
}

std::string pictureOf(FaxSession& session, const std::string& place)
{
    const FileHandle postScript = makeUnnamedFile();
    FileSink sink(postScript, localized("the temporary copy of the cover page"));
    writeCoverPageAlone(session, sink, factsOfNow());
    try {
        return drawn(postScript);
    } catch (const Error& error) {
        // Translators: a file, and why.
        throw Error(localized("%s: the cover page cannot be drawn: %s", place, error.what()));
    }
}

using Status = std::optional<struct stat>;

Status statusOf(int file)
{
    struct stat status = {};
    return ::fstat(file, &status) == 0 ? Status(status) : std::nullopt;
}

bool areOne(const Status& one, const Status& other)
{
    return one && other && one->st_dev == other->st_dev && one->st_ino == other->st_ino;
}

/// A file that is there, and a name in a folder.
struct Place {
    Status file;
    Status folder;
    std::string name;
};

Place placeOf(const std::string& path)
{
    if (path == "-")
        return {statusOf(STDOUT_FILENO), {}, {}};
    const WriteTarget target = findWriteTarget(path);
    return {target.present, statusOf(target.folder.get()), target.name};
}

} // namespace

void writeCoverPicture(FaxSession& session, const std::string& path)
{
    if (path == "-") {
        const std::string place = localized("standard output");
        const std::string picture = pictureOf(session, place);
        const WriteSignalsIgnored failuresOnly;
        return writeAll(STDOUT_FILENO, picture, place);
    }
    AtomicFile file(path);
    file.write(pictureOf(session, path));
    file.commit();
}

bool leadToOneFile(const std::string& one, const std::string& other)
{
    if (one == other)
        return true;
    const Place first = placeOf(one);
    const Place second = placeOf(other);
    if (areOne(first.file, second.file))
        return !S_ISCHR(first.file->st_mode); // a device takes what comes by several names
    return areOne(first.folder, second.folder) && first.name == second.name;
}

} // namespace quelm
