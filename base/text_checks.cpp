// Checks of texts that come from outside.
#include "base/text_checks.h"

#include "base/error.h"
#include "base/file_handle.h"
#include "base/log.h"
#include "base/translation.h"

#include <fcntl.h>
#include <glib.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

namespace quelm {
namespace {

bool isControl(char byte) { return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7f; }

} // namespace

bool isUtf8(std::string_view text)
{
    return text.empty() || g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr) != 0;
}

bool hasControlCharacter(std::string_view text) { return std::ranges::any_of(text, isControl); }

std::string displayName(const std::filesystem::path& file)
{
    return file == "-" ? localized("standard input") : oneLine(file.string());
}

std::string readTextFile(const std::filesystem::path& file, std::size_t largest)
{
    const auto fail = [&](int error) {
        return Error(
            localized("%s: cannot be read: %s", displayName(file), std::system_category().message(error)));
    };
    const FileHandle input(file == "-" ? ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0)
                                       : ::open(file.c_str(), O_RDONLY | O_CLOEXEC));
    if (!input.isOpen())
        throw fail(errno);
    std::string content;
    std::array<char, 65536> block{};
    for (;;) {
        const auto size = ::read(input.get(), block.data(), block.size());
        if (size < 0 && errno == EINTR)
            continue;
        if (size < 0)
            throw fail(errno);
        if (size == 0)
            return content;
        content.append(block.data(), static_cast<std::size_t>(size));
        if (content.size() > largest)
            throw Error(localized("%s: is larger than %d MiB; give a smaller file", displayName(file),
                                  largest / 1048576));
    }
}

} // namespace quelm
