// The fake host's journal: every call that the component makes, in order, one readable line each.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_JOURNAL_H
#define TESTS_SUPPORT_JOURNAL_H

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace fake {

/// A text in double quotes, control characters escaped, so that a journal line is one line.
std::string quoted(std::string_view text);
/// The same for a text of the boundary; a null pointer reads `null`.
std::string quoted(const char* text);
inline std::string quoted(const std::string& text) { return quoted(std::string_view(text)); }

/// The lines of an expected journal in the form that `Journal` answers with.
std::string lines(std::initializer_list<std::string> entries);

/// An ordered record of calls.
class Journal {
public:
    enum class Kind {
        effect, ///< the call changes or shows something
        read,   ///< the call asks for a value
        lookup, ///< the call only computes (token numbers, plain text)
    };

    void add(Kind kind, std::string entry);
    void clear() { entries_.clear(); }

    /// Only the effects, a line each.
    std::string effects() const;
    /// Effects and reads, a line each.
    std::string calls() const;
    /// Everything, a line each.
    std::string all() const;
    /// How many entries begin with `beginning`.
    int count(std::string_view beginning) const;

private:
    struct Entry {
        Kind kind;
        std::string text;
    };

    std::string upTo(Kind last) const;

    std::vector<Entry> entries_;
};

} // namespace fake

#endif
