// Checks a library's headers against the file that holds them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/shared_object.h"

#include "base/system_reason.h"
#include "base/translation.h"

#include <dlfcn.h>
#include <elf.h>
#include <link.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace quelm {

namespace {

using FileHeader = ElfW(Ehdr);
using SegmentHeader = ElfW(Phdr);

std::string noLibrary() { return localized("it is not a shared library"); }

std::string cutShort() { return localized("it is cut short; install it again"); }

/// The header of this program itself: a component must be for the same kind of processor.
FileHeader ownHeader()
{
    FileHeader header{};
    std::ifstream("/proc/self/exe", std::ios::binary).read(reinterpret_cast<char*>(&header), sizeof header);
    return header;
}

template <class Header>
bool read(std::ifstream& stream, std::uint64_t offset, Header& header)
{
    stream.seekg(static_cast<std::streamoff>(offset));
    stream.read(reinterpret_cast<char*>(&header), sizeof header);
    return stream.good();
}

std::string problemOfSegments(std::ifstream& stream, const FileHeader& header, std::uint64_t size)
{
    if (header.e_phentsize != sizeof(SegmentHeader))
        return noLibrary();
    for (unsigned number = 0; number < header.e_phnum; ++number) {
        SegmentHeader segment{};
        if (!read(stream, header.e_phoff + number * sizeof segment, segment))
            return cutShort();
        if (segment.p_offset > size || segment.p_filesz > size - segment.p_offset)
            return cutShort();
    }
    return "";
}

} // namespace

std::string problemOfSharedObject(const std::string& file)
{
    std::error_code failure;
    const std::filesystem::file_status status = std::filesystem::status(file, failure);
    if (!std::filesystem::exists(status))
        return localized("no such file; install it there or name another one");
    if (!std::filesystem::is_regular_file(status))
        return localized("it is not a file");
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        return systemReason(errno);
    std::array<char, SELFMAG> start{};
    if (!read(stream, 0, start) || std::memcmp(start.data(), ELFMAG, SELFMAG) != 0)
        return noLibrary();
    FileHeader header{};
    if (!read(stream, 0, header))
        return cutShort();
    const FileHeader own = ownHeader();
    if (header.e_ident[EI_CLASS] != own.e_ident[EI_CLASS] || header.e_machine != own.e_machine)
        return localized("it is built for another kind of processor");
    return header.e_type == ET_DYN
               ? problemOfSegments(stream, header, std::filesystem::file_size(file, failure))
               : noLibrary();
}

std::string loaderMessage(const std::string& file)
{
    const char* message = ::dlerror();
    std::string reason = message == nullptr ? localized("unknown reason") : message;
    const std::string prefix = file + ": ";
    return reason.starts_with(prefix) ? reason.substr(prefix.size()) : reason;
}

} // namespace quelm
