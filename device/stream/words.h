// Words of the lines that jobs are described with.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_STREAM_WORDS_H
#define DEVICE_STREAM_WORDS_H

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace quelm::device {

inline bool isLetter(char character)
{
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

inline bool isDigit(char character) { return character >= '0' && character <= '9'; }

inline bool isBlank(char character) { return character == ' ' || character == '\t'; }

/// Takes blanks and tabs off the front.
inline void skipBlanks(std::string_view& text)
{
    text.remove_prefix(static_cast<std::size_t>(std::ranges::find_if_not(text, isBlank) - text.begin()));
}

/// Takes letters, digits and "_" off the front.
inline std::string_view takeWord(std::string_view& text)
{
    const auto isInWord = [](char character) {
        return isLetter(character) || isDigit(character) || character == '_';
    };
    const auto size = static_cast<std::size_t>(std::ranges::find_if_not(text, isInWord) - text.begin());
    const auto word = text.substr(0, size);
    text.remove_prefix(size);
    return word;
}

/// True when two words differ in nothing but capitals.
inline bool equalWords(std::string_view left, std::string_view right)
{
    const auto small = [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
    };
    return std::ranges::equal(left, right, {}, small, small);
}

/// True when a text begins with a word, whatever its capitals.
inline bool beginsWithWord(std::string_view text, std::string_view word)
{
    return text.size() >= word.size() && equalWords(text.substr(0, word.size()), word);
}

} // namespace quelm::device

#endif
