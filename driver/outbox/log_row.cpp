// The columns of the log, and what may stand in them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/log_row.h"

#include "base/texts.h"

#include <array>
#include <climits>
#include <cstddef>
#include <limits>
#include <string_view>
#include <utility>
#include <variant>

namespace quelm {

const char* const rowTable =
    "CREATE TABLE job(number INTEGER PRIMARY KEY AUTOINCREMENT, state TEXT NOT NULL, kind TEXT NOT NULL, "
    "name TEXT NOT NULL, port INTEGER NOT NULL, server TEXT NOT NULL, title TEXT NOT NULL, "
    "user TEXT NOT NULL, pdl TEXT NOT NULL, recipients BLOB NOT NULL, options BLOB NOT NULL, "
    "due INTEGER NOT NULL, unattended INTEGER NOT NULL, sent_before INTEGER NOT NULL, "
    "queued INTEGER NOT NULL, ended INTEGER NOT NULL, size INTEGER NOT NULL, "
    "charges_card INTEGER NOT NULL, queue_job INTEGER NOT NULL, place TEXT NOT NULL, note TEXT NOT NULL, "
    "has_stream INTEGER NOT NULL, document TEXT NOT NULL, token TEXT NOT NULL, before TEXT NOT NULL, "
    "begun INTEGER NOT NULL, held INTEGER NOT NULL, inode INTEGER NOT NULL, card_at INTEGER NOT NULL, "
    "card_size INTEGER NOT NULL, "
    "holds_card INTEGER NOT NULL, holds_stream INTEGER NOT NULL)";

namespace {

constexpr std::array columns{
    "state",        "kind",      "name",  "port",       "server",      "title",      "user",         "pdl",
    "recipients",   "options",   "due",   "unattended", "sent_before", "queued",     "ended",        "size",
    "charges_card", "queue_job", "place", "note",       "has_stream",  "document",   "token",        "before",
    "begun",        "held",      "inode", "card_at",    "card_size",   "holds_card", "holds_stream",
};

/// Texts of which none holds a NUL, one behind the other.
void append(std::string& list, std::string_view text)
{
    list.append(text.substr(0, text.find('\0')));
    list += '\0';
}

std::optional<std::string> next(std::string_view& list)
{
    const auto end = list.find('\0');
    if (end == std::string_view::npos)
        return std::nullopt;
    std::string text(list.substr(0, end));
    list.remove_prefix(end + 1);
    return text;
}

std::string listOf(const std::vector<JobRecipient>& recipients)
{
    std::string list;
    for (const auto& recipient : recipients) {
        append(list, std::to_string(recipient.type));
        for (const auto* text : {&recipient.name, &recipient.number, &recipient.organization,
                                 &recipient.phone, &recipient.email, &recipient.mailbox})
            append(list, *text);
    }
    return list;
}

bool readRecipients(std::string_view list, std::vector<JobRecipient>& recipients)
{
    while (!list.empty()) {
        const auto type = next(list);
        if (!type || type->size() != 1 || type->front() < '0' || type->front() > '9')
            return false;
        JobRecipient recipient;
        recipient.type = type->front() - '0';
        for (auto* text : {&recipient.name, &recipient.number, &recipient.organization, &recipient.phone,
                           &recipient.email, &recipient.mailbox}) {
            auto found = next(list);
            if (!found)
                return false;
            *text = std::move(*found);
        }
        recipients.push_back(std::move(recipient));
    }
    return true;
}

std::string listOf(const OptionValues& options)
{
    std::string list;
    for (const auto& [name, value] : options) {
        append(list, name);
        append(list, value);
    }
    return list;
}

bool readOptions(std::string_view list, OptionValues& options)
{
    while (!list.empty()) {
        auto name = next(list);
        auto value = next(list);
        if (!name || !value)
            return false;
        options.emplace(std::move(*name), std::move(*value));
    }
    return true;
}

std::optional<OutboxState> stateOf(std::string_view word)
{
    for (const auto state : {OutboxState::waiting, OutboxState::handingOver, OutboxState::handedOver,
                             OutboxState::uncertain, OutboxState::failed, OutboxState::cancelled})
        if (word == wordOf(state))
            return state;
    return std::nullopt;
}

struct TargetColumns {
    std::string_view kind;
    std::string_view name;
    int port = 0;
    std::string_view server;
};

TargetColumns columnsOf(const JobTarget& target)
{
    if (const auto* device = std::get_if<NetworkAddress>(&target))
        return {"device", device->host, device->port, {}};
    if (const auto* queue = std::get_if<QueueTarget>(&target))
        return {"queue", queue->name, 0, queue->server};
    return {"file", std::get<FileTarget>(target).path, 0, {}};
}

std::optional<JobTarget> targetOf(std::string_view kind, std::string name, std::int64_t port,
                                  std::string server)
{
    if (name.empty() || name.find('\0') != std::string::npos || server.find('\0') != std::string::npos)
        return std::nullopt;
    if (kind == "device" && port > 0 && port <= std::numeric_limits<std::uint16_t>::max())
        return NetworkAddress{std::move(name), static_cast<std::uint16_t>(port)};
    if (kind == "queue" && !hasControlCharacter(name))
        return QueueTarget{std::move(name), std::move(server)};
    if (kind == "file" && name.starts_with('/'))
        return FileTarget{std::move(name)};
    return std::nullopt;
}

bool isFileName(std::string_view name)
{
    return name != "." && name != ".." && name.find('/') == std::string_view::npos &&
           name.find('\0') == std::string_view::npos && name.size() <= NAME_MAX;
}

bool isToken(std::string_view token)
{
    constexpr std::size_t digits = 16;
    return token.empty() ||
           (token.size() == digits && token.find_first_not_of("0123456789abcdef") == std::string_view::npos);
}

/// Reads the columns one by one, and notes whether each is possible.
class RowReader {
public:
    explicit RowReader(const sqlite::Statement& statement) : statement_(statement) {}

    std::string text() { return statement_.bytes(column_++); }

    std::int64_t number(std::int64_t least, std::int64_t most)
    {
        const auto value = statement_.number(column_++);
        isGood_ = isGood_ && value >= least && value <= most;
        return value;
    }
    int smallNumber(int least) { return static_cast<int>(number(least, INT_MAX)); }
    bool flag() { return number(0, 1) == 1; }

    /// A moment before the year 10000.
    std::time_t moment() { return static_cast<std::time_t>(number(0, 253'402'300'799)); }
    std::uint64_t size() { return static_cast<std::uint64_t>(number(0, INT64_MAX)); }

    OutboxState state()
    {
        const auto found = stateOf(text());
        require(found.has_value());
        return found.value_or(OutboxState::failed);
    }

    void require(bool holds) { isGood_ = isGood_ && holds; }
    bool isGood() const { return isGood_; }

private:
    const sqlite::Statement& statement_;
    int column_ = 0;
    bool isGood_ = true;
};

} // namespace

std::string rowColumns()
{
    std::string list;
    for (const auto* column : columns)
        list.append(list.empty() ? "" : ", ").append(column);
    return list;
}

std::string rowParameters()
{
    std::string list;
    for (std::size_t i = 0; i < columns.size(); ++i)
        list.append(list.empty() ? "?" : ", ?").append(std::to_string(i + 2));
    return list;
}

std::string rowAssignments()
{
    std::string list;
    for (std::size_t i = 0; i < columns.size(); ++i)
        list.append(list.empty() ? "" : ", ")
            .append(columns.at(i))
            .append(" = ?")
            .append(std::to_string(i + 2));
    return list;
}

BoundRow::BoundRow(sqlite::Statement& statement, const LogRow& row)
    : recipients_(listOf(row.recipients)), options_(listOf(row.options))
{
    int parameter = 2;
    const auto text = [&](std::string_view value) { statement.bindText(parameter++, value); };
    const auto number = [&](auto value) {
        statement.bindNumber(parameter++, static_cast<std::int64_t>(value));
    };
    const TargetColumns target = columnsOf(row.target);
    text(wordOf(row.state));
    text(target.kind);
    text(target.name);
    number(target.port);
    text(target.server);
    text(row.title);
    text(row.user);
    text(row.pdl == Pdl::dsc ? "dsc" : "pjl");
    statement.bind(parameter++, recipients_);
    statement.bind(parameter++, options_);
    number(row.due);
    number(row.isUnattended);
    number(row.sentBefore);
    number(row.queued);
    number(row.ended);
    number(row.size);
    number(row.chargesCard);
    number(row.queueJob);
    text(row.place);
    text(row.note);
    number(row.hasStream);
    text(row.document);
    text(row.token);
    text(wordOf(row.before));
    number(row.isBegun);
    number(row.isHeld);
    number(row.inode);
    number(row.cardAt);
    number(row.cardSize);
    number(row.holdsCard);
    number(row.holdsStream);
}

std::optional<LogRow> readRow(const sqlite::Statement& statement)
{
    RowReader reader(statement);
    LogRow row;
    row.number = reader.smallNumber(1);
    row.state = reader.state();
    const std::string kind = reader.text();
    std::string name = reader.text();
    const auto port = reader.number(0, std::numeric_limits<std::uint16_t>::max());
    std::string server = reader.text();
    auto target = targetOf(kind, std::move(name), port, std::move(server));
    reader.require(target.has_value());
    if (target)
        row.target = std::move(*target);
    row.title = reader.text();
    row.user = reader.text();
    const std::string pdl = reader.text();
    reader.require(pdl == "dsc" || pdl == "pjl");
    row.pdl = pdl == "pjl" ? Pdl::pjl : Pdl::dsc;
    reader.require(readRecipients(reader.text(), row.recipients));
    reader.require(readOptions(reader.text(), row.options));
    row.due = reader.moment();
    row.isUnattended = reader.flag();
    row.sentBefore = reader.smallNumber(0);
    row.queued = reader.moment();
    row.ended = reader.moment();
    row.size = reader.size();
    row.chargesCard = reader.flag();
    row.queueJob = reader.smallNumber(0);
    row.place = reader.text();
    row.note = reader.text();
    row.hasStream = reader.flag();
    row.document = reader.text();
    reader.require(isFileName(row.document));
    row.token = reader.text();
    reader.require(isToken(row.token));
    row.before = reader.state();
    row.isBegun = reader.flag();
    row.isHeld = reader.flag();
    row.inode = reader.number(INT64_MIN, INT64_MAX);
    row.cardAt = reader.size();
    row.cardSize = reader.size();
    reader.require(row.cardSize <= row.size && row.cardAt <= row.size - row.cardSize);
    row.holdsCard = reader.flag();
    row.holdsStream = reader.flag();
    return reader.isGood() ? std::optional(std::move(row)) : std::nullopt;
}

} // namespace quelm
