// The commands `config show` and `config check`.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/json_answer.h"
#include "base/error.h"
#include "base/log.h"
#include "base/standard_output.h"
#include "base/translation.h"
#include "driver/cli/commands.h"
#include "driver/cli/config_listing.h"
#include "driver/config/configuration_file.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace quelm {
namespace {

std::optional<std::string> ifGiven(const std::string& file)
{
    return file.empty() ? std::nullopt : std::optional(file);
}

/// The answer of a check as one object.
std::string checkJson(const Configuration& configuration, const std::vector<std::string>& problems)
{
    using Json = nlohmann::ordered_json;
    Json files = Json::array();
    for (const auto& source : configuration.sources)
        if (source.isThere)
            files.push_back(source.file);
    const Json answer = {{"files", files}, {"problems", problems}};
    return answer.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace

void runConfigShowCommand(const CommandLine& line)
{
    const auto configuration = loadConfiguration(ifGiven(line.config));
    if (line.json)
        return writeJsonAnswer(configurationJson(configuration));
    writeAnswer(configurationText(configuration));
}

void runConfigCheckCommand(const CommandLine& line)
{
    std::vector<std::string> problems;
    const auto take = [&problems](const std::string& problem) { problems.push_back(problem); };
    const auto configuration =
        loadConfiguration(ifGiven(line.checkedFile.empty() ? line.config : line.checkedFile), take);
    const auto files =
        std::ranges::count_if(configuration.sources, [](const auto& source) { return source.isThere; });
    if (line.json)
        writeJsonAnswer(checkJson(configuration, problems));
    for (std::size_t i = 0; i + 1 < problems.size(); ++i)
        writeUnderProgramName(problems[i]);
    if (!problems.empty())
        throw Error(problems.back());
    if (line.json || line.quiet)
        return;
    if (files == 0)
        return writeAnswer(localized("there is no configuration file; see quelm-driver config show") + "\n");
    // Translators: how many configuration files were read.
    writeAnswer(localizedCount("%d configuration file, nothing is wrong",
                               "%d configuration files, nothing is wrong", static_cast<std::size_t>(files),
                               files) +
                "\n");
}

} // namespace quelm
