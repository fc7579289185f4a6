// Reads and writes the rows of the device's database.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/jobs/log_rows.h"

#include <algorithm>
#include <array>
#include <climits>
#include <utility>

namespace quelm::device {
namespace {

template <class Value>
struct Word {
    Value value;
    std::string_view word;
};

constexpr std::array<Word<JobState>, 6> jobStates{{{JobState::received, "received"},
                                                   {JobState::calling, "calling"},
                                                   {JobState::done, "done"},
                                                   {JobState::printed, "printed"},
                                                   {JobState::refused, "refused"},
                                                   {JobState::failed, "failed"}}};
constexpr std::array<Word<RecipientState>, 4> recipientStates{{{RecipientState::waiting, "waiting"},
                                                               {RecipientState::calling, "calling"},
                                                               {RecipientState::sent, "sent"},
                                                               {RecipientState::failed, "failed"}}};
constexpr std::array<Word<CallState>, 3> callStates{
    {{CallState::calling, "calling"}, {CallState::ended, "ended"}, {CallState::brokenOff, "broken off"}}};
constexpr std::array<Word<JobForm>, 3> forms{
    {{JobForm::plain, "plain"}, {JobForm::dsc, "DSC"}, {JobForm::pjl, "PJL"}}};
constexpr std::array<Word<Resolution>, 3> resolutions{
    {{Resolution::standard, "standard"}, {Resolution::fine, "fine"}, {Resolution::superfine, "superfine"}}};
constexpr std::array<Word<Speed>, 3> speeds{
    {{Speed::forced4800, "4800"}, {Speed::upTo14400, "14400"}, {Speed::automatic, "automatic"}}};

template <class Words, class Value>
std::string_view wordIn(const Words& words, Value value)
{
    return std::ranges::find(words, value, [](const auto& word) { return word.value; })->word;
}

/// Reads the columns of a row in their order.
class Columns {
public:
    Columns(const DeviceDatabase& database, const sqlite::Statement& statement)
        : database_(database), statement_(statement)
    {
    }

    std::string bytes() { return statement_.bytes(next_++); }
    std::int64_t number() { return statement_.number(next_++); }
    bool truth() { return number() != 0; }
    int count()
    {
        const auto value = number();
        if (value < INT_MIN || value > INT_MAX)
            database_.failDamaged();
        return static_cast<int>(value);
    }
    std::uint64_t size()
    {
        const auto value = number();
        if (value < 0)
            database_.failDamaged();
        return static_cast<std::uint64_t>(value);
    }
    template <class Words>
    auto value(const Words& words)
    {
        const std::string word = bytes();
        const auto* found = std::ranges::find(words, word, [](const auto& known) { return known.word; });
        if (found == words.end())
            database_.failDamaged();
        return found->value;
    }

private:
    const DeviceDatabase& database_;
    const sqlite::Statement& statement_;
    int next_ = 0;
};

/// Whether a remark shows "*" for as many digits as a card has: the job's file holds them.
bool mayHoldCard(const ReceivedJob& reading)
{
    constexpr int shortestCard = 12;
    return std::ranges::any_of(reading.objections, [](const Remark& remark) {
        int stars = 0;
        return std::ranges::any_of(remark.text, [&stars](char sign) {
            if (sign != ' ' && sign != '-')
                stars = sign == '*' ? stars + 1 : 0;
            return stars == shortestCard;
        });
    });
}

void insertRemarks(DeviceDatabase& database, int job, bool isRefusal, const std::vector<Remark>& remarks)
{
    auto insertion = database.statement("INSERT INTO remark VALUES(?,?,?,?,?)");
    std::int64_t position = 0;
    for (const Remark& remark : remarks) {
        Parameters(insertion)
            .number(job)
            .number(isRefusal ? 1 : 0)
            .number(++position)
            .number(static_cast<std::int64_t>(remark.line))
            .bytes(remark.text);
        insertion.step();
        insertion.reset();
    }
}

void selectRemarks(DeviceDatabase& database, JobRecord& job)
{
    auto select = database.statement("SELECT is_refusal, line, text FROM remark WHERE job = ?1 "
                                     "ORDER BY is_refusal, position");
    select.bindNumber(1, job.number);
    while (select.step()) {
        Columns columns(database, select);
        auto& remarks = columns.truth() ? job.reading.refusals : job.reading.objections;
        const auto line = columns.size();
        remarks.push_back({line, columns.bytes()});
    }
}

void selectRecipients(DeviceDatabase& database, JobRecord& job)
{
    auto select = database.statement(
        "SELECT position, number, mailbox, line, keys, state, attempts, next_attempt, result, "
        "code, pages_sent, last_call_at, last_duration FROM recipient WHERE job = ?1 "
        "ORDER BY position");
    select.bindNumber(1, job.number);
    while (select.step()) {
        Columns columns(database, select);
        RecipientRecord recipient;
        recipient.position = columns.count();
        recipient.number = columns.bytes();
        recipient.mailbox = columns.bytes();
        const auto line = columns.size();
        recipient.keys = columns.bytes();
        recipient.state = columns.value(recipientStates);
        recipient.attempts = columns.count();
        recipient.nextAttempt = momentOf(columns.number());
        if (recipient.state != RecipientState::waiting)
            recipient.nextAttempt.reset();
        recipient.result = columns.bytes();
        recipient.code = columns.count();
        recipient.pagesSent = columns.count();
        recipient.lastCallAt = momentOf(columns.number());
        recipient.lastDuration = std::chrono::milliseconds(columns.number());
        job.reading.destinations.push_back({recipient.number, recipient.mailbox, line});
        job.recipients.push_back(std::move(recipient));
    }
}

void bindCall(Parameters& parameters, const CallRecord& call)
{
    parameters.number(call.job)
        .number(call.position)
        .number(call.attempt)
        .text(wordOf(call.state))
        .number(milliseconds(call.begunAt))
        .number(call.duration.count())
        .text(call.dialled)
        .text(call.receiver)
        .bytes(call.result)
        .bytes(call.libraryWords)
        .number(call.code)
        .number(call.pagesSent)
        .number(call.pagesKept)
        .number(call.bitRate)
        .number(call.errorCorrection ? 1 : 0)
        .bytes(call.identity)
        .number(call.fellBack ? 1 : 0)
        .number(call.repeatedFrames)
        .number(call.damagedRows)
        .bytes(call.mailbox);
}

} // namespace

std::string_view wordOf(JobState state) { return wordIn(jobStates, state); }
std::string_view wordOf(RecipientState state) { return wordIn(recipientStates, state); }
std::string_view wordOf(CallState state) { return wordIn(callStates, state); }

std::int64_t milliseconds(Moment moment) { return moment.time_since_epoch().count(); }

std::optional<Moment> momentOf(std::int64_t milliseconds)
{
    if (milliseconds <= 0)
        return std::nullopt;
    return Moment(std::chrono::milliseconds(milliseconds));
}

void insertJob(DeviceDatabase& database, const JobRecord& job, const std::vector<std::string>& keys)
{
    const ReceivedJob& reading = job.reading;
    auto insertion =
        database.statement("INSERT INTO job(number, state, received_at, sender, form, title, is_fax, "
                           "cover_sheet, confirmation, resolution, speed, card, card_size, size, "
                           "postscript_begin, postscript_end, pages, problem, has_report, drops_file) "
                           "VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,0,?,0,?)");
    // What is refused is never dialled: nothing is kept that might hold a card.
    const bool isRefused = job.state == JobState::refused;
    const std::string_view card = isRefused ? std::string_view() : reading.creditCard;
    Parameters(insertion)
        .number(job.number)
        .text(wordOf(job.state))
        .number(milliseconds(job.receivedAt))
        .bytes(job.from)
        .text(wordIn(forms, reading.form))
        .bytes(reading.title)
        .number(reading.isFax ? 1 : 0)
        .number(reading.coverSheet ? 1 : 0)
        .number(reading.confirmationSheet ? 1 : 0)
        .text(wordIn(resolutions, reading.resolution))
        .text(wordIn(speeds, reading.speed))
        .bytes(card)
        .number(static_cast<std::int64_t>(reading.creditCard.size()))
        .number(static_cast<std::int64_t>(reading.size))
        .number(static_cast<std::int64_t>(reading.postScriptBegin))
        .number(static_cast<std::int64_t>(reading.postScriptEnd))
        .bytes(job.problem)
        .number(!isRefused && mayHoldCard(reading) ? 2 : 0);
    insertion.step();

    auto recipient = database.statement("INSERT INTO recipient VALUES(?,?,?,?,?,?,?,0,0,x'',0,0,0,0)");
    for (std::size_t at = 0; !isRefused && at < reading.destinations.size(); ++at) {
        const Destination& destination = reading.destinations[at];
        Parameters(recipient)
            .number(job.number)
            .number(static_cast<std::int64_t>(at) + 1)
            .bytes(destination.number)
            .bytes(destination.mailbox)
            .number(static_cast<std::int64_t>(destination.line))
            .text(keys.at(at))
            .text(wordOf(RecipientState::waiting));
        recipient.step();
        recipient.reset();
    }
    insertRemarks(database, job.number, true, reading.refusals);
    insertRemarks(database, job.number, false, reading.objections);
}

std::optional<JobRecord> selectJob(DeviceDatabase& database, int number)
{
    auto select = database.statement(
        "SELECT number, state, received_at, sender, form, title, is_fax, cover_sheet, confirmation, "
        "resolution, "
        "speed, card_size, size, postscript_begin, postscript_end, pages, problem, has_report FROM job "
        "WHERE number = ?1");
    select.bindNumber(1, number);
    if (!select.step())
        return std::nullopt;
    Columns columns(database, select);
    JobRecord job;
    job.number = columns.count();
    job.state = columns.value(jobStates);
    job.receivedAt = Moment(std::chrono::milliseconds(columns.number()));
    job.from = columns.bytes();
    job.reading.form = columns.value(forms);
    job.reading.title = columns.bytes();
    job.reading.isFax = columns.truth();
    job.reading.coverSheet = columns.truth();
    job.reading.confirmationSheet = columns.truth();
    job.reading.resolution = columns.value(resolutions);
    job.reading.speed = columns.value(speeds);
    constexpr std::uint64_t mostStars = 100;
    job.reading.creditCard.assign(std::min(columns.size(), mostStars), '*');
    job.reading.size = columns.size();
    job.reading.postScriptBegin = columns.size();
    job.reading.postScriptEnd = columns.size();
    job.pages = columns.count();
    job.problem = columns.bytes();
    job.hasReport = columns.truth();
    selectRecipients(database, job);
    selectRemarks(database, job);
    return job;
}

Speed selectSpeed(DeviceDatabase& database, int job)
{
    auto select = database.statement("SELECT speed FROM job WHERE number = ?1");
    select.bindNumber(1, job);
    if (!select.step())
        database.failDamaged();
    return Columns(database, select).value(speeds);
}

std::vector<CallRecord> selectCalls(DeviceDatabase& database, const std::string& condition, int first,
                                    int second)
{
    auto select = database.statement(
        "SELECT number, job, position, attempt, state, begun_at, duration, dialled, receiver, result, "
        "library_words, code, pages_sent, pages_kept, bit_rate, error_correction, identity, fell_back, "
        "repeated_frames, damaged_rows, mailbox FROM call WHERE " +
        condition);
    select.bindNumber(1, first);
    select.bindNumber(2, second);
    std::vector<CallRecord> calls;
    while (select.step()) {
        Columns columns(database, select);
        CallRecord call;
        call.number = columns.count();
        call.job = columns.count();
        call.position = columns.count();
        call.attempt = columns.count();
        call.state = columns.value(callStates);
        call.begunAt = Moment(std::chrono::milliseconds(columns.number()));
        call.duration = std::chrono::milliseconds(columns.number());
        call.dialled = columns.bytes();
        call.receiver = columns.bytes();
        call.result = columns.bytes();
        call.libraryWords = columns.bytes();
        call.code = columns.count();
        call.pagesSent = columns.count();
        call.pagesKept = columns.count();
        call.bitRate = columns.count();
        call.errorCorrection = columns.truth();
        call.identity = columns.bytes();
        call.fellBack = columns.truth();
        call.repeatedFrames = columns.count();
        call.damagedRows = columns.count();
        call.mailbox = columns.bytes();
        calls.push_back(std::move(call));
    }
    return calls;
}

void insertCall(DeviceDatabase& database, const CallRecord& call)
{
    auto insertion = database.statement(
        "INSERT INTO call(job, position, attempt, state, begun_at, duration, dialled, receiver, result, "
        "library_words, code, pages_sent, pages_kept, bit_rate, error_correction, identity, fell_back, "
        "repeated_frames, damaged_rows, mailbox, number) "
        "VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)");
    Parameters parameters(insertion);
    bindCall(parameters, call);
    parameters.number(call.number);
    insertion.step();
}

void updateCall(DeviceDatabase& database, const CallRecord& call)
{
    auto change = database.statement(
        "UPDATE call SET job = ?1, position = ?2, attempt = ?3, state = ?4, begun_at = ?5, duration = ?6, "
        "dialled = ?7, receiver = ?8, result = ?9, library_words = ?10, code = ?11, pages_sent = ?12, "
        "pages_kept = ?13, bit_rate = ?14, error_correction = ?15, identity = ?16, fell_back = ?17, "
        "repeated_frames = ?18, damaged_rows = ?19, mailbox = ?20 "
        "WHERE number = ?21");
    Parameters parameters(change);
    bindCall(parameters, call);
    parameters.number(call.number);
    change.step();
}

} // namespace quelm::device
