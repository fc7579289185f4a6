// Opens TIFF files with handlers of their own for errors and warnings.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/tiff/tiff_handle.h"

#include "base/file_handle.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <mutex>

namespace quelm::device {
namespace {

int countMessage(TIFF* /*tiff*/, void* messages, const char* /*module*/, const char* /*format*/,
                 va_list /*arguments*/)
{
    if (messages != nullptr)
        ++*static_cast<int*>(messages);
    return 1; // the process's own handler is not to be asked
}

using OptionsHandle = std::unique_ptr<TIFFOpenOptions, ReleasedBy<TIFFOpenOptionsFree>>;

OptionsHandle quietOptions(int* messages)
{
    OptionsHandle options(TIFFOpenOptionsAlloc());
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), &countMessage, messages);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), &countMessage, messages);
    return options;
}

} // namespace

TiffHandle openTiff(const std::string& file, const char* mode, int* messages)
{
    const OptionsHandle options = quietOptions(messages);
    return TiffHandle(TIFFOpenExt(file.c_str(), mode, options.get()));
}

TiffHandle openForeignTiff(const std::filesystem::path& file)
{
    constexpr tmsize_t mostMemory = tmsize_t{64} << 20U;
    FileHandle opened(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
    struct stat status = {};
    if (!opened.isOpen() || ::fstat(opened.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return nullptr;
    const OptionsHandle options = quietOptions(nullptr);
    TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), mostMemory);
    // "m": a mapped file that is cut short under our eyes would end the program.
    TiffHandle tiff(TIFFFdOpenExt(opened.get(), file.c_str(), "rm", options.get()));
    if (tiff != nullptr)
        static_cast<void>(opened.release()); // the library closes it
    return tiff;
}

void silenceTiffLibrary()
{
    static std::once_flag once;
    std::call_once(once, [] {
        TIFFSetErrorHandler(nullptr);
        TIFFSetWarningHandler(nullptr);
    });
}

} // namespace quelm::device
