// Connects what was dialled.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/exchange/exchange.h"

#include "device/exchange/exchange_plan.h"

#include <string_view>
#include <utility>

namespace quelm::device {
namespace {

constexpr std::size_t longestNumber = 100;
constexpr std::size_t longestIdentity = 20;

/// The keys of the number that is meant: without the outside line, which ends with a pause, and pauses.
std::string meantNumber(std::string_view keys, std::string_view outsideLine)
{
    const auto pause = keys.find(',');
    if (!outsideLine.empty() && pause != std::string_view::npos && keys.substr(0, pause) == outsideLine)
        keys.remove_prefix(pause);
    std::string number;
    for (const char key : keys)
        if (key != ',')
            number += key;
    const bool hasDigit = number.find_first_of("0123456789") != std::string::npos;
    return hasDigit && number.size() <= longestNumber ? number : std::string();
}

std::string folderName(std::string number)
{
    for (char& key : number)
        key = key == '*' ? 's' : key == '#' ? 'p' : key;
    return number;
}

std::string digitsOf(const std::string& number)
{
    std::string identity;
    for (const char key : number)
        if (key >= '0' && key <= '9' && identity.size() < longestIdentity)
            identity += key;
    return identity;
}

} // namespace

struct Exchange::Plan : ExchangePlan {};

Exchange::Exchange(const std::string& file) : plan_(std::make_unique<Plan>())
{
    if (!file.empty())
        static_cast<ExchangePlan&>(*plan_) = readExchangePlan(file);
}

Exchange::~Exchange() = default;
Exchange::Exchange(Exchange&&) noexcept = default;
Exchange& Exchange::operator=(Exchange&&) noexcept = default;

bool Exchange::asksForCards() const { return plan_->asksForCards; }

Connection Exchange::connect(const DialledKeys& dialled, int attempt) const
{
    const std::string number = meantNumber(dialled.number, plan_->outsideLine);
    Connection connection;
    if (number.empty())
        return connection;
    connection.number = folderName(number);
    AnsweringParty& party = connection.party;
    party.kind = plan_->others;
    if (const NumberPlan* found = planFor(*plan_, number)) {
        party = found->fax;
        party.kind = attempt <= found->busyAttempts ? AnsweringParty::Kind::busy : found->answer;
    }
    if (party.identity.empty())
        party.identity = plan_->identity.empty() ? digitsOf(number) : plan_->identity;
    return connection;
}

} // namespace quelm::device
