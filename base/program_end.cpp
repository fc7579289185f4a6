// Turns what a program threw into its line and its exit status.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/program_end.h"

#include "base/catalogue_folder.h"
#include "base/error.h"
#include "base/log.h"
#include "base/standard_output.h"
#include "base/texts.h"
#include "base/translation.h"

#include <csignal>
#include <exception>
#include <new>
#include <string>
#include <string_view>

namespace quelm {
namespace {

constexpr int done = 0;
constexpr int failed = 1;
constexpr int wrongUsage = 2;

int complain(const std::string& line, int status)
{
    writeUnderProgramName(oneLine(line));
    return status;
}

} // namespace

int exitStatusOf(std::string_view program, const std::function<void()>& work)
{
    occupyStandardDescriptors();
    setProgramName(std::string(program));
    // Whoever starts us may ignore it, and then no program that we run could be waited for.
    std::signal(SIGCHLD, SIG_DFL);
    useOwnTranslations();
    const auto outOfMemory = localized("out of memory"); // at hand when there is no more
    try {
        work();
        return done;
    } catch (const UsageError& error) {
        return complain(error.what(), wrongUsage);
    } catch (const std::bad_alloc&) {
        writeUnderProgramName(outOfMemory);
        return failed;
    } catch (const std::exception& error) {
        return complain(error.what(), failed);
    }
}

} // namespace quelm
