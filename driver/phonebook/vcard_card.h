// One card: what the vCard library reads, with the questions that a phonebook has.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_VCARD_CARD_H
#define DRIVER_PHONEBOOK_VCARD_CARD_H

#include "driver/phonebook/person.h"
#include "driver/phonebook/vcard_library.h"

#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// A number or address on a card.
struct CardNumber {
    std::string value;
    Use use = Use::unmarked;
    bool fax = false;
    bool voice = true;  ///< somebody can be called there
    int preference = 0; ///< the least comes first
};

/// A card that has been read. Texts are UTF-8, unescaped, with their lines unfolded.
class Card {
public:
    /// `text` goes from BEGIN:VCARD to END:VCARD.
    explicit Card(const std::string& text);

    /// The first value of a property, its components joined by `separator`; empty when there is none.
    /// A property's name counts without regard to case.
    std::string text(std::string_view property, const char* separator = ";") const;
    /// All values of a property that occurs several times.
    std::vector<std::string> texts(std::string_view property) const;

    /// The words of a property whose values are parted by commas.
    std::vector<std::string> words(std::string_view property) const;

    /// FN or, without one, N as it is spoken.
    std::string name() const;
    bool isGroup() const;
    /// TEL or EMAIL, preferred ones first.
    std::vector<CardNumber> numbers(std::string_view property) const;

private:
    /// What a program of a maker's own calls the property of that group; empty when it does not.
    std::string labelOf(const std::string& group) const;

    std::vector<CardProperty> properties_;
};

} // namespace quelm

#endif
