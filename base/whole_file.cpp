// Reads until the end, or until there is too much.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/whole_file.h"

#include "base/error.h"
#include "base/system_reason.h"
#include "base/texts.h"
#include "base/translation.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace quelm {

namespace {

/// As `read`, interrupted or not.
std::size_t readSome(const FileHandle& file, char* bytes, std::size_t size)
{
    for (;;) {
        const auto count = ::read(file.get(), bytes, size);
        if (count >= 0)
            return static_cast<std::size_t>(count);
        if (errno != EINTR)
            throw std::system_error(errno, std::generic_category());
    }
}

} // namespace

std::optional<std::string> restOf(const FileHandle& file, std::size_t largest,
                                  const std::optional<PipeLimits>& limits)
{
    std::string content;
    std::array<char, 65536> block{};
    bool heard = false;
    for (;;) {
        const auto size = limits ? readBounded(file, block.data(), block.size(), *limits, heard)
                                 : readSome(file, block.data(), block.size());
        if (size == 0)
            return content;
        content.append(block.data(), size);
        if (content.size() > largest)
            return std::nullopt;
    }
}

std::string displayName(const std::filesystem::path& file)
{
    return file == "-" ? localized("standard input") : oneLine(file.string());
}

std::string readTextFile(const std::filesystem::path& file, std::size_t largest, const PipeLimits& limits)
{
    const auto fail = [&](const std::string& reason) {
        return Error(localized("%s: cannot be read: %s", displayName(file), reason));
    };
    const bool standardInput = file == "-";
    const FileHandle input =
        standardInput ? FileHandle(::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0)) : openToRead(file);
    if (!input.isOpen())
        throw fail(systemReason(errno));
    try {
        if (auto content = restOf(input, largest, standardInput ? std::nullopt : std::optional(limits)))
            return *std::move(content);
    } catch (const std::system_error& failure) {
        throw fail(systemReason(failure.code().value()));
    } catch (const PipeTimeout& timeout) {
        throw fail(timeout.what());
    }
    throw Error(
        localized("%s: is larger than %d MiB; give a smaller file", displayName(file), largest / 1048576));
}

} // namespace quelm
