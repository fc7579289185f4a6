// Writes JSON answers, and failures in their place.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/json_answer.h"

#include "base/error.h"
#include "base/standard_output.h"
#include "base/texts.h"

#include <nlohmann/json.hpp>

#include <exception>
#include <new>
#include <string_view>

namespace quelm {
namespace {

// As the program ends.
constexpr int failed = 1;
constexpr int wrongUsage = 2;

bool& isAnswered()
{
    static bool answered = false;
    return answered;
}

void tellFailure(const std::string& line, int status)
{
    if (isAnswered())
        return;
    try {
        writeAnswer(failureJson(line, status));
    } catch (const Error&) {
        return; // the line on standard error and the exit status say it as well
    }
}

} // namespace

bool asksForJson(int argc, const char* const* argv)
{
    for (int i = 1; i < argc && std::string_view(argv[i]) != "--"; ++i)
        if (std::string_view(argv[i]) == "--json")
            return true;
    return false;
}

void writeJsonAnswer(const std::string& json)
{
    isAnswered() = true;
    writeAnswer(json);
}

void writeJsonResult(const std::string& json)
{
    isAnswered() = true;
    writeResult(json);
}

void withJsonFailure(bool asJson, const std::function<void()>& work)
{
    if (!asJson)
        return work();
    isAnswered() = false;
    try {
        work();
    } catch (const std::bad_alloc&) {
        throw; // there is no memory for an answer
    } catch (const UsageError& error) {
        tellFailure(error.what(), wrongUsage);
        throw;
    } catch (const std::exception& error) {
        tellFailure(error.what(), failed);
        throw;
    }
}

std::string failureJson(const std::string& line, int status)
{
    using Json = nlohmann::ordered_json;
    const Json failure = {{"error", oneLine(line)}, {"status", status}};
    return failure.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace quelm
