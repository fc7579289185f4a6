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

std::optional<std::string> restOf(const FileHandle& file, std::size_t largest)
{
    std::string content;
    std::array<char, 65536> block{};
    for (;;) {
        const auto size = ::read(file.get(), block.data(), block.size());
        if (size < 0 && errno == EINTR)
            continue;
        if (size < 0)
            throw std::system_error(errno, std::generic_category());
        if (size == 0)
            return content;
        content.append(block.data(), static_cast<std::size_t>(size));
        if (content.size() > largest)
            return std::nullopt;
    }
}

std::string displayName(const std::filesystem::path& file)
{
    return file == "-" ? localized("standard input") : oneLine(file.string());
}

std::string readTextFile(const std::filesystem::path& file, std::size_t largest)
{
    const auto fail = [&](int error) {
        return Error(localized("%s: cannot be read: %s", displayName(file), systemReason(error)));
    };
    const FileHandle input(file == "-" ? ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0)
                                       : ::open(file.c_str(), O_RDONLY | O_CLOEXEC));
    if (!input.isOpen())
        throw fail(errno);
    try {
        if (auto content = restOf(input, largest))
            return *std::move(content);
    } catch (const std::system_error& failure) {
        throw fail(failure.code().value());
    }
    throw Error(
        localized("%s: is larger than %d MiB; give a smaller file", displayName(file), largest / 1048576));
}

} // namespace quelm
