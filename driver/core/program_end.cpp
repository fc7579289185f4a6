// Turns what a program threw into its line and its exit status.
#include "driver/core/program_end.h"

#include "driver/core/error.h"
#include "driver/core/log.h"

#include <exception>
#include <iostream>
#include <new>
#include <string>

namespace quelm {
namespace {

constexpr int done = 0;
constexpr int failed = 1;
constexpr int wrongUsage = 2;

int complain(std::string_view program, std::string_view line, int status)
{
    std::cerr << program << ": " << oneLine(std::string(line)) << std::endl;
    return status;
}

} // namespace

int exitStatusOf(std::string_view program, const std::function<void()>& work)
{
    try {
        work();
        return done;
    } catch (const UsageError& error) {
        return complain(program, error.what(), wrongUsage);
    } catch (const std::bad_alloc&) {
        return complain(program, "out of memory", failed);
    } catch (const std::exception& error) {
        return complain(program, error.what(), failed);
    }
}

} // namespace quelm
