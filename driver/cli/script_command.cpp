// The command `script`: reads it whole, then acts line by line.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "base/standard_output.h"
#include "base/translation.h"
#include "base/whole_file.h"
#include "driver/cli/commands.h"
#include "driver/cli/driver_setup.h"
#include "driver/cli/script/script_runner.h"
#include "driver/core/user_actions.h"

#include <cstddef>
#include <string>

namespace quelm {
namespace {

constexpr std::size_t largestScript = std::size_t{16} * 1024 * 1024;

} // namespace

void runScriptCommand(const CommandLine& line)
{
    const auto name = displayName(line.script);
    const auto script = readTextFile(line.script, largestScript);
    const auto steps = parseScript(script, name);
    auto setup = setUpDriver(line);
    setup.driver.holdOptionTroubles = true; // the step that writes a job ends with them
    Driver driver(setup.driver);
    driver.actions().nameWidgets();
    ScriptRunner runner(driver, setup.pdl, setup.outbox);
    for (const auto& step : steps) {
        std::string answer;
        try {
            answer = runner.run(step);
        } catch (const Error& error) {
            throw Error(name + ":" + std::to_string(step.line) + ": " + error.what());
        }
        writeAnswer(answer);
    }
}

} // namespace quelm
