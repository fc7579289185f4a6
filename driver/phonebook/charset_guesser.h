// The library that guesses charsets, as a part that is loaded when a text does not say its own.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_CHARSET_GUESSER_H
#define DRIVER_PHONEBOOK_CHARSET_GUESSER_H

#include <string>
#include <string_view>

namespace quelm {

/// Implemented by the module "charsets".
class CharsetGuesser {
public:
    static constexpr const char* moduleName = "charsets";

    CharsetGuesser() = default;
    virtual ~CharsetGuesser() = default;
    CharsetGuesser(const CharsetGuesser&) = delete;
    CharsetGuesser& operator=(const CharsetGuesser&) = delete;

    /// The charset that a text looks like, in capitals, such as WINDOWS-1252; empty when it looks like none.
    virtual std::string guess(std::string_view text) const = 0;
};

} // namespace quelm

#endif
