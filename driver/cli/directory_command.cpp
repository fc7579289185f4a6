// The command `directory`: searches the device's directory through the component.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/json_answer.h"
#include "base/log.h"
#include "base/standard_output.h"
#include "base/terminal/columns.h"
#include "base/translation.h"
#include "driver/cli/commands.h"
#include "driver/cli/driver_setup.h"
#include "driver/cli/job/directory_dialog.h"
#include "driver/core/driver.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace quelm {
namespace {

std::string asColumns(const std::vector<DirectoryPerson>& people)
{
    std::vector<std::vector<std::string>> rows;
    rows.reserve(people.size());
    for (const auto& person : people)
        rows.push_back({person.name, person.number, person.phone, person.email});
    return alignedColumns(rows);
}

/// The people, and whether the search came to its end.
std::string asJson(const std::vector<DirectoryPerson>& people, SearchExtent extent)
{
    using Json = nlohmann::ordered_json;
    Json json = {{"people", Json::array()}, {"complete", extent == SearchExtent::whole}};
    for (const auto& person : people)
        json["people"].push_back({{"name", person.name},
                                  {"number", person.number},
                                  {"phone", person.phone},
                                  {"email", person.email}});
    constexpr int indentation = 2;
    return json.dump(indentation, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace

void runDirectoryCommand(const CommandLine& line)
{
    const auto setup = setUpForOneCommand(line);
    Driver driver(setup.driver);
    driver.call("T40InvokeFaxDialog");
    const auto people = DirectoryDialog(driver).search(line.directoryPrefix);
    const auto extent = driver.lastFailure().searchExtent;
    driver.releaseFailures();
    if (line.json)
        return writeJsonAnswer(asJson(people, extent));
    if (people.empty())
        writeRemark(localized("nobody in the directory has a surname that begins like this"));
    writeAnswer(asColumns(people));
}

} // namespace quelm
