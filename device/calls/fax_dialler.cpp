// Dials, is connected, and faxes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/calls/fax_dialler.h"

#include "base/translation.h"
#include "device/jobs/dial_keys.h"
#include "device/jobs/state_files.h"

#include <algorithm>
#include <chrono>

namespace quelm::device {
namespace {

constexpr int slow = 4800;
constexpr int fast = 14400;
constexpr std::chrono::milliseconds promptTone{1000};

/// Nobody presses more: a number that somebody made up must not keep a line for hours.
constexpr std::size_t mostKeys = 200;

/// The same call has the same noise on its line, whenever it is made.
unsigned seedOf(const CallRecord& call)
{
    constexpr unsigned prime = 16777619;
    unsigned seed = 2166136261U;
    for (const int part : {call.job, call.position, call.attempt})
        seed = (seed ^ static_cast<unsigned>(part)) * prime;
    return seed;
}

/// What the exchange hears. A card's keys are in `keys` alone, never in what is remembered.
DialledKeys dial(const DueCall& due, const Exchange& exchange, CallRecord& record)
{
    DialledKeys keys;
    keys.number = dialTones(due.keys, record.duration);
    record.dialled = keys.number;
    if (due.card.empty() || !exchange.asksForCards())
        return keys;
    record.duration += promptTone;
    keys.card = dialTones(keysFor(due.card), record.duration);
    record.dialled += " " + std::string(keys.card.size(), '*');
    return keys;
}

} // namespace

CallEnd makeCall(const DueCall& due, const StateFolder& folder, const Exchange& exchange,
                 const std::string& identity, const CallWatch& watch)
{
    CallEnd end;
    CallRecord& record = end.record;
    record = due.call;
    if (due.keys.size() > mostKeys || due.card.size() > mostKeys) {
        record.result = localized("the number or the card is too long to be dialled");
        record.code = -1;
        return end;
    }
    const DialledKeys dialled = dial(due, exchange, record);
    const auto dialling = record.duration;
    if (watch && !watch({.lineTime = dialling, .pagesSent = 0})) {
        end.kind = CallResult::Kind::cancelled;
        return end;
    }
    Connection connection = exchange.connect(dialled, record.attempt);
    if (connection.number.empty()) {
        record.result = localized("there is no such number");
        record.code = -1;
        return end;
    }

    connection.party.keepAs = folder.incomingCall(record.number);
    removeQuietly(connection.party.keepAs);
    CallingFax caller;
    caller.pages = folder.pagesFile(record.job);
    caller.identity = identity;
    caller.subAddress = due.mailbox;
    caller.fastest = due.speed == Speed::forced4800 ? slow : fast;
    const auto watched = [&](const CallProgress& progress) {
        return !watch || watch({.lineTime = progress.lineTime + dialling, .pagesSent = progress.pagesSent});
    };
    const CallResult result = carryCall(caller, connection.party, watched, seedOf(record));

    end.kind = result.kind;
    record.duration += result.duration;
    if (isFile(connection.party.keepAs))
        record.receiver = connection.number;
    record.result = result.words;
    record.libraryWords = result.libraryWords;
    record.code = result.code;
    record.pagesSent = result.pagesSent;
    record.pagesKept = result.pagesKept;
    record.bitRate = result.bitRate;
    record.errorCorrection = result.errorCorrection;
    record.identity = result.identity;
    record.mailbox = result.subAddress;
    record.repeatedFrames = result.repeatedFrames;
    record.damagedRows = result.damagedRows;
    record.fellBack = due.speed == Speed::automatic && result.bitRate > 0;
    return end;
}

} // namespace quelm::device
