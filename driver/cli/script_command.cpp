// The command `script`: reads it whole, then acts line by line.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/json_answer.h"
#include "base/error.h"
#include "base/standard_output.h"
#include "base/texts.h"
#include "base/translation.h"
#include "base/whole_file.h"
#include "driver/cli/commands.h"
#include "driver/cli/driver_setup.h"
#include "driver/cli/script/script_json.h"
#include "driver/cli/script/script_list.h"
#include "driver/cli/script/script_runner.h"
#include "driver/core/user_actions.h"

#include <cstddef>
#include <string>
#include <vector>

namespace quelm {
namespace {

constexpr std::size_t largestScript = std::size_t{16} * 1024 * 1024;

/// What scripts can name, without a script.
void list(const CommandLine& line)
{
    Driver driver(setUpForOneCommand(line).driver);
    driver.releaseFailures();
    const auto names = scriptNames(driver);
    if (line.json)
        writeJsonAnswer(namesJson(names));
    else
        writeAnswer(namesText(names));
}

/// Says that a script can be read; what its steps do, nobody knows before.
void check(const std::vector<ScriptStep>& steps, const std::string& name, bool asJson)
{
    if (asJson)
        return writeJsonAnswer(jsonLine({{"script", name}, {"steps", steps.size()}}));
    // Translators: a file, and how many lines of it do something.
    writeAnswer(localizedCount("%s: %d step; nothing is done", "%s: %d steps; nothing is done", steps.size(),
                               oneLine(name), steps.size()) +
                "\n");
}

} // namespace

void runScriptCommand(const CommandLine& line)
{
    if (line.scriptList)
        return list(line);
    const auto name = displayName(line.script);
    const auto script = readTextFile(line.script, largestScript);
    const auto steps = parseScript(script, name);
    if (line.scriptDryRun)
        return check(steps, name, line.json);
    auto setup = setUpDriver(line);
    setup.driver.holdOptionTroubles = true; // the step that writes a job ends with them
    Driver driver(setup.driver);
    driver.actions().nameWidgets();
    ScriptRunner runner(driver, setup.pdl, setup.outbox);
    for (const auto& step : steps) {
        ScriptAnswer answer;
        try {
            answer = runner.run(step);
        } catch (const Error& error) {
            throw Error(name + ":" + std::to_string(step.line) + ": " + error.what());
        }
        writeAnswer(line.json ? answerJson(answer) : answerText(answer));
    }
}

} // namespace quelm
