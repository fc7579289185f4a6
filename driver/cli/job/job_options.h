// The options that describe one fax job, shared by every command that makes one.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_JOB_JOB_OPTIONS_H
#define DRIVER_CLI_JOB_JOB_OPTIONS_H

#include "base/net/network_address.h"
#include "base/translation.h"
#include "driver/cli/job/recipients_csv.h"
#include "driver/plugin/fax_session.h"
#include "driver/widgets/widget_names.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace quelm {

/// What to do with a recipient that stands in the job already.
enum class Duplicates { ask, add, skip };

/// A time of day: hour 0 to 23, minute 0 to 59.
struct TimeOfDay {
    int hour = 0;
    int minute = 0;
};

/// What the user asked for. An option that was not given is empty, and then the user's saved
/// choice stands. Texts are UTF-8, as they are to be typed.
struct JobOptions {
    std::vector<std::string> to;           ///< NAME=NUMBER or NUMBER each, in order
    std::optional<std::string> recipients; ///< CSV file, after `to`
    RecipientsReading recipientsReading;   ///< how that file is read
    std::vector<std::string> entries;      ///< names in the phonebook, after those
    std::vector<std::string> groups;       ///< groups of the phonebook, after those
    std::vector<std::string> directory;    ///< beginnings of names in the device's directory, last
    std::optional<std::string> shared;     ///< the phonebook that they stand in; without it the user's own
    bool fromShared = false;               ///< the shared one that the fax dialog shows, in place of `shared`
    std::optional<bool> cover;
    std::optional<std::string> note;
    std::optional<bool> showRecipients;
    std::optional<std::string> customText;
    std::optional<bool> showSender;
    std::optional<std::string> senderName;
    std::optional<std::string> senderNumber;
    std::optional<std::string> senderOrganization;
    std::optional<std::string> senderPhone;
    std::optional<std::string> senderEmail;
    std::optional<bool> confirmation;
    std::optional<int> resolution; ///< index of "LanFax Resolution"
    std::optional<int> speed;      ///< index of "LanFax Send Speed"
    std::optional<TimeOfDay> sendAt;
    bool sendNow = false; ///< whatever time the dialog keeps
    std::optional<std::string> prefix;
    std::optional<std::string> creditCard;
    std::optional<std::string> creditCardFile; ///< its first line is the card's number; "-" is standard input
    bool keptCreditCard = false;               ///< charge the card that the dialog keeps
    std::optional<Duplicates> duplicates;
    std::optional<Pdl> pdl;
    std::optional<std::string> output;      ///< a file, or "-" for standard output
    std::optional<NetworkAddress> device;   ///< the device that takes the job
    std::optional<std::string> queue;       ///< the print queue that takes it
    std::optional<std::string> destination; ///< the name of a place that the configuration knows
    /// A picture of the cover page, ahead of all else: a file, or "-" for standard output.
    std::optional<std::string> coverPreview;
    bool toOutbox = false; ///< put the job into the outbox, whenever it goes out
    bool dryRun = false;   ///< sum the job up, and do nothing else
    bool asJson = false;   ///< for other programs
};

/// The index in "LanFax Resolution" of what --resolution calls so; nothing for another word.
[[nodiscard]] std::optional<int> resolutionIndex(const std::string& word);

/// Adds the options to a command; parsing it fills `options`, which must outlive the parsing.
void addJobOptions(CLI::App& command, JobOptions& options);

/// Adds --cover-preview, for a command whose jobs go out, behind `addJobOptions`. Where it is given and no
/// destination is, the command does not need its document any more.
void addCoverPreviewOption(CLI::App& command, JobOptions& options, CLI::Option& document);

/// Adds --outbox and --dry-run, for the same commands, behind those.
void addHandoverOptions(CLI::App& command, JobOptions& options);

/// Adds the options that name recipients, for a job that is sent again; they are among those of
/// `addJobOptions`.
void addRecipientOptions(CLI::App& command, JobOptions& options);

/// Adds the options about the cover sheet, likewise.
void addCoverOptions(CLI::App& command, JobOptions& options);

/// Adds --credit-card and --credit-card-file, likewise.
void addCardNumberOptions(CLI::App& command, JobOptions& options);

/// Adds --output, --device, --queue and --destination, likewise.
void addDestinationOptions(CLI::App& command, JobOptions& options);

/// One field of the sender dialog and the option that fills it.
struct SenderField {
    const char* option;
    std::optional<std::string> JobOptions::*text;
    const char* widget;
    const char* description;
};

/// All sender fields, in the order of the dialog.
inline constexpr std::array<SenderField, 5> senderFields{{
    {"--sender-number", &JobOptions::senderNumber, widget_names::senderFaxNumber,
     forTranslation("The sender's fax number")},
    {"--sender-name", &JobOptions::senderName, widget_names::senderFaxName,
     forTranslation("The sender's name")},
    {"--sender-organization", &JobOptions::senderOrganization, widget_names::senderFaxOrganization,
     forTranslation("The sender's organization")},
    {"--sender-phone", &JobOptions::senderPhone, widget_names::senderFaxTelNumber,
     forTranslation("The sender's phone number")},
    {"--sender-email", &JobOptions::senderEmail, widget_names::senderFaxEmailAddr,
     forTranslation("The sender's e-mail address")},
}};

} // namespace quelm

#endif
