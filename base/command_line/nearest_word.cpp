// Measures words by the distance of Damerau and Levenshtein, for changes that do not overlap.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/nearest_word.h"

#include <glib.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace quelm {
namespace {

constexpr std::size_t lettersForOneSlip = 3;
constexpr std::size_t mostSlips = 3;
constexpr std::size_t shortestBeginning = 2;

std::string comparable(std::string_view word)
{
    word.remove_prefix(std::min(word.find_first_not_of('-'), word.size()));
    std::string letters(word);
    for (char& letter : letters)
        letter = g_ascii_tolower(letter);
    return letters;
}

/// How many slips of the hand lie between two words.
std::size_t slipsBetween(std::string_view from, std::string_view to)
{
    std::vector<std::size_t> beforeLast(to.size() + 1);
    std::vector<std::size_t> last(to.size() + 1);
    std::vector<std::size_t> row(to.size() + 1);
    for (std::size_t j = 0; j <= to.size(); ++j)
        last[j] = j;
    for (std::size_t i = 1; i <= from.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const bool same = from[i - 1] == to[j - 1];
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same ? 0 : 1)});
            const bool exchanged = i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1];
            if (exchanged)
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
        beforeLast.swap(last);
        last.swap(row);
    }
    return last[to.size()];
}

/// How many slips a word of that length may have: short words are like too many others.
std::size_t slipsAllowed(std::size_t letters)
{
    return std::min(std::max<std::size_t>(letters / lettersForOneSlip, letters > 1 ? 1 : 0), mostSlips);
}

} // namespace

std::optional<std::string> nearestWord(const std::string& given, const std::vector<std::string>& possible)
{
    const auto meant = comparable(given);
    std::optional<std::string> nearest;
    std::size_t least = slipsAllowed(meant.size()) + 1;
    std::vector<std::string> beginningAlike;
    for (const auto& word : possible) {
        const auto letters = comparable(word);
        if (meant.size() >= shortestBeginning && letters.starts_with(meant))
            beginningAlike.push_back(word);
        const auto difference =
            std::max(letters.size(), meant.size()) - std::min(letters.size(), meant.size());
        if (difference >= least || letters.size() < 2)
            continue;
        if (const auto slips = slipsBetween(meant, letters); slips < least) {
            least = slips;
            nearest = word;
        }
    }
    // What somebody did not type to its end is more likely than a slip.
    if (beginningAlike.size() == 1 && least > 0)
        return beginningAlike.front();
    return nearest;
}

} // namespace quelm
