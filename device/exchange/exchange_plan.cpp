// Reads the exchange's file, and finds the pattern of a number.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/exchange/exchange_plan.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "base/whole_file.h"
#include "device/exchange/exchange_lines.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <climits>
#include <set>
#include <tuple>
#include <utility>

namespace quelm::device {
namespace {

constexpr std::string_view exchangeGroup = "exchange";
constexpr std::string_view numberGroup = "number";
constexpr std::string_view keysOfTelephones = "0123456789*#";
constexpr std::string_view digits = "0123456789";
constexpr std::size_t longestPattern = 100;

/// `problem` ends the sentence: "has ...", "cannot be understood ...".
[[noreturn]] void fail(const std::string& file, const std::string& problem)
{
    // Translators: %s is the file's name, and what is wrong with it: "has no value at ...".
    throw Error(localized("the exchange's file \"%s\" %s", displayName(file), problem));
}

template <class Number>
bool takeNumber(std::string_view text, Number least, Number most, Number& taken)
{
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || !(number >= least && number <= most))
        return false;
    taken = number;
    return true;
}

bool takeTruth(std::string_view text, bool& taken)
{
    if (text != "yes" && text != "no")
        return false;
    taken = text == "yes";
    return true;
}

bool takeAnswer(std::string_view text, AnsweringParty::Kind& taken)
{
    using Kind = AnsweringParty::Kind;
    constexpr std::array<std::pair<std::string_view, Kind>, 4> answers{
        {{"fax", Kind::fax}, {"busy", Kind::busy}, {"no-answer", Kind::noAnswer}, {"voice", Kind::voice}}};
    const auto* found = std::ranges::find(answers, text, &std::pair<std::string_view, Kind>::first);
    if (found == answers.end())
        return false;
    taken = found->second;
    return true;
}

bool takeIdentity(std::string_view text, std::string& taken)
{
    constexpr std::size_t longest = 20; // what a station identity holds
    if (text.size() > longest || text.find_first_not_of("0123456789 +") != std::string_view::npos)
        return false;
    taken = text;
    return true;
}

/// A key, what may stand behind it, and what takes it.
template <class Plan>
struct Key {
    std::string_view name;
    const char* expected;
    bool (*take)(Plan& plan, std::string_view value);
};

constexpr int mostPages = 100000;
constexpr int mostAttempts = 1000;
const char* const expectedAnswer = forTranslation("\"fax\", \"busy\", \"no-answer\" or \"voice\"");
const char* const expectedTruth = forTranslation("\"yes\" or \"no\"");
const char* const expectedIdentity = forTranslation("at most 20 digits, blanks and \"+\"");
const char* const expectedPages = forTranslation("a number of pages from 1 to 100000");

const std::array<Key<ExchangePlan>, 4> exchangeKeys{{
    {"outside-line", forTranslation("the keys for an outside line, of digits, \"*\" and \"#\", or \"none\""),
     [](ExchangePlan& plan, std::string_view value) {
         if (value != "none" && value.find_first_not_of(keysOfTelephones) != std::string_view::npos)
             return false;
         plan.outsideLine = value == "none" ? std::string_view() : value;
         return true;
     }},
    {"cards", expectedTruth,
     [](ExchangePlan& plan, std::string_view value) { return takeTruth(value, plan.asksForCards); }},
    {"others", expectedAnswer,
     [](ExchangePlan& plan, std::string_view value) { return takeAnswer(value, plan.others); }},
    {"identity", expectedIdentity,
     [](ExchangePlan& plan, std::string_view value) { return takeIdentity(value, plan.identity); }},
}};

bool takePages(std::string_view value, std::optional<int>& taken)
{
    int number = 0;
    if (!takeNumber(value, 1, mostPages, number))
        return false;
    taken = number;
    return true;
}

const std::array<Key<NumberPlan>, 8> numberKeys{{
    {"answer", expectedAnswer,
     [](NumberPlan& plan, std::string_view value) { return takeAnswer(value, plan.answer); }},
    {"busy", forTranslation("\"always\", or a number of calls from 1 to 1000"),
     [](NumberPlan& plan, std::string_view value) {
         plan.saysBusy = true;
         if (value == "always") {
             plan.busyAttempts = INT_MAX;
             return true;
         }
         return takeNumber(value, 1, mostAttempts, plan.busyAttempts);
     }},
    {"speed", forTranslation("4800 or 14400"),
     [](NumberPlan& plan, std::string_view value) {
         plan.saysFax = true;
         return (value == "4800" || value == "14400") && takeNumber(value, 0, INT_MAX, plan.fax.fastest);
     }},
    {"error-correction", expectedTruth,
     [](NumberPlan& plan, std::string_view value) {
         plan.saysFax = true;
         return takeTruth(value, plan.fax.errorCorrection);
     }},
    {"noise", forTranslation("a number of dB from 0 to 100, by which the signal is above the noise"),
     [](NumberPlan& plan, std::string_view value) {
         plan.saysFax = true;
         constexpr double most = 100;
         double ratio = 0;
         if (!takeNumber(value, 0.0, most, ratio))
             return false;
         plan.fax.noise = ratio;
         return true;
     }},
    {"hangs-up-after-page", expectedPages,
     [](NumberPlan& plan, std::string_view value) {
         plan.saysFax = true;
         return takePages(value, plan.fax.hangsUpAfterPage);
     }},
    {"paper-for-pages", expectedPages,
     [](NumberPlan& plan, std::string_view value) {
         plan.saysFax = true;
         return takePages(value, plan.fax.paperForPages);
     }},
    {"identity", expectedIdentity,
     [](NumberPlan& plan, std::string_view value) {
         plan.saysFax = true;
         return takeIdentity(value, plan.fax.identity);
     }},
}};

template <class Plan, class Keys>
void takeGroup(const std::string& file, const ExchangeGroup& group, const Keys& known, Plan& plan)
{
    for (const auto& [name, value] : group.entries) {
        const auto* key = std::ranges::find(known, name, &Key<Plan>::name);
        if (key == known.end()) {
            std::string possible;
            for (const auto& each : known)
                possible += (possible.empty() ? "" : ", ") + std::string(each.name);
            fail(file, localized("has an unknown key \"%s\" in [%s]; possible are %s", shownText(name),
                                 shownText(group.name), possible));
        }
        if (!key->take(plan, value))
            // Translators: the last %s is what may stand there: "yes" or "no".
            fail(file, localized("has \"%s\" at %s; write %s", shownText(value), placeOf(group.name, name),
                                 localized(key->expected)));
    }
}

/// What no number can be at once.
void requireConsistent(const std::string& file, const std::string& group, const NumberPlan& plan)
{
    using Kind = AnsweringParty::Kind;
    const auto contradiction = [&](const std::string& one, const std::string& other) {
        fail(file, localized("contradicts itself in [%s]: %s does not go with %s; remove one of the two",
                             shownText(group), one, other));
    };
    if (plan.saysBusy && plan.answer == Kind::busy)
        contradiction("\"answer = busy\"", "\"busy\"");
    if (plan.saysBusy && plan.busyAttempts == INT_MAX && (plan.saysFax || plan.answer != Kind::fax))
        contradiction("\"busy = always\"", localized("what answers"));
    if (plan.saysFax && plan.answer != Kind::fax)
        contradiction("\"answer\"", localized("keys of a fax machine"));
    if (plan.fax.hangsUpAfterPage && plan.fax.paperForPages)
        contradiction("\"hangs-up-after-page\"", "\"paper-for-pages\"");
}

bool isNumberGroup(std::string_view name)
{
    return name.starts_with(numberGroup) &&
           (name.size() == numberGroup.size() ||
            std::string_view(" \t").find(name[numberGroup.size()]) != std::string_view::npos);
}

std::string patternOf(const std::string& file, const std::string& group)
{
    std::string pattern(trimmed(std::string_view(group).substr(numberGroup.size())));
    const std::string_view body =
        std::string_view(pattern).substr(0, pattern.size() - (pattern.ends_with('*') ? 1 : 0));
    if (pattern.size() > longestPattern)
        fail(file, localized("has the group [%s], whose number is longer than the %d keys that a call has",
                             shownText(group), longestPattern));
    if (pattern.empty() || body.find_first_not_of("0123456789?") != std::string_view::npos)
        fail(file, localized("has the group [%s], whose number is not written as it is dialled: write its "
                             "digits without \"-\" and blanks, 00 for \"+\", \"?\" for any one digit, and "
                             "\"*\" at the end for any others",
                             shownText(group)));
    return pattern;
}

bool fits(std::string_view pattern, std::string_view number)
{
    const bool isOpen = pattern.ends_with('*');
    pattern.remove_suffix(isOpen ? 1 : 0);
    if (isOpen ? number.size() < pattern.size() : number.size() != pattern.size())
        return false;
    return std::equal(pattern.begin(), pattern.end(), number.begin(), [](char wanted, char key) {
        return wanted == key || (wanted == '?' && digits.find(key) != std::string_view::npos);
    });
}

/// The greater, the better.
std::tuple<bool, std::ptrdiff_t> closeness(std::string_view pattern)
{
    return {!pattern.ends_with('*'), std::ranges::count_if(pattern, [](char sign) {
                return digits.find(sign) != std::string_view::npos;
            })};
}

} // namespace

ExchangePlan readExchangePlan(const std::string& file)
{
    constexpr std::size_t mostBytes = std::size_t{1} << 20U;
    const std::string content = readTextFile(file, mostBytes);
    ExchangePlan plan;
    std::set<std::string> patterns;
    for (const auto& group :
         readExchangeLines(content, [&file](const std::string& problem) { fail(file, problem); })) {
        if (group.name == exchangeGroup) {
            takeGroup(file, group, exchangeKeys, plan);
        } else if (isNumberGroup(group.name)) {
            NumberPlan number;
            number.pattern = patternOf(file, group.name);
            if (!patterns.insert(number.pattern).second)
                fail(file, localized("has the group [%s] twice; join the two", shownText(group.name)));
            takeGroup(file, group, numberKeys, number);
            requireConsistent(file, group.name, number);
            plan.numbers.push_back(std::move(number));
        } else {
            fail(file, localized("has an unknown group [%s]; possible are [exchange] and [number PATTERN]",
                                 shownText(group.name)));
        }
    }
    return plan;
}

const NumberPlan* planFor(const ExchangePlan& plan, std::string_view number)
{
    const NumberPlan* best = nullptr;
    for (const NumberPlan& each : plan.numbers)
        if (fits(each.pattern, number) &&
            (best == nullptr || closeness(each.pattern) > closeness(best->pattern)))
            best = &each;
    return best;
}

} // namespace quelm::device
