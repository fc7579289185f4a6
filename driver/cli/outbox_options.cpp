// The actions on the outbox and their options.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/outbox_options.h"

#include "base/command_line/help_texts.h"
#include "base/translation.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <string>

namespace quelm {
namespace {

int jobNumber(const std::string& given)
{
    int number = 0;
    const auto* end = given.data() + given.size();
    const auto result = std::from_chars(given.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end || number < 1)
        throw CLI::ValidationError(
            "NUMBER", localized("\"%s\" is no number of a job; see quelm-driver outbox list", given));
    return number;
}

void addNumber(CLI::App& action, OutboxRequest& request)
{
    action
        .add_option_function<std::string>(
            "NUMBER", [&request](const std::string& given) { request.numbers = {jobNumber(given)}; },
            localized("Number of a job, as the list shows it"))
        ->required()
        ->type_name("");
}

void addNumbers(CLI::App& action, OutboxRequest& request)
{
    const auto take = [&request](const std::vector<std::string>& given) {
        request.numbers.clear();
        for (const auto& number : given)
            request.numbers.push_back(jobNumber(number));
    };
    action
        .add_option_function<std::vector<std::string>>("NUMBER", take,
                                                       localized("Numbers of jobs, as the list shows them"))
        ->required()
        ->type_name("");
}

} // namespace

void addOutboxActions(CLI::App& command, OutboxRequest& request)
{
    command.require_subcommand(1);
    const auto add = [&](OutboxAction action, const char* name, const std::string& text) -> CLI::App& {
        CLI::App& added = *command.add_subcommand(name, text);
        added.callback([&request, action] { request.action = action; });
        return added;
    };

    add(OutboxAction::list, "list", localized("List the jobs and what became of them"));

    auto& show = add(OutboxAction::show, "show", localized("Show all that is known of jobs"));
    addNumbers(show, request);

    addNumbers(add(OutboxAction::cancel, "cancel", localized("Cancel jobs that were not handed over")),
               request);

    auto& send =
        add(OutboxAction::send, "send", localized("Hand jobs over now, whatever time they wait for"));
    addNumbers(send, request);
    send.add_flag("--yes", request.yes,
                  localized("Also a job that the device may have already, without asking"));

    auto& resend = add(OutboxAction::resend, "resend",
                       localized("Send a job again that was handed over, also to other recipients"));
    addNumber(resend, request);
    addRecipientOptions(resend, request.job);
    addCoverOptions(resend, request.job);
    addDestinationOptions(resend, request.job);
    addCardNumberOptions(resend, request.job);
    const OptionSection section(resend, localized("Credit card"));
    auto* without = resend.add_flag("--without-card", request.withoutCard,
                                    localized("Charge no credit card, though the job did"));
    for (const char* card : {"--credit-card", "--credit-card-file"})
        resend.get_option(card)->excludes(without);

    auto& run = add(OutboxAction::run, "run", localized("Hand over the jobs whose time has come"));
    run.add_flag("--wait", request.wait, localized("Stay until no job waits any more"));

    for (auto* action : command.get_subcommands({}))
        action->fallthrough();
    for (const char* action : {"cancel", "send", "resend", "run"})
        command.get_subcommand(action)->add_flag(
            "--dry-run", request.dryRun,
            localized("Say what would happen, and neither send nor keep anything"));
    run.get_option("--dry-run")->excludes(run.get_option("--wait"));
}

} // namespace quelm
