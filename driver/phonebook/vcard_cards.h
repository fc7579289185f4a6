// Finds the cards in a text, with their lines, before the vCard library reads them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_VCARD_CARDS_H
#define DRIVER_PHONEBOOK_VCARD_CARDS_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// One card from BEGIN to END, each property that a phonebook has a use for unfolded on a line of its own
/// that ends in CRLF. The others are left out; of a card with a problem, those behind it too.
struct CardText {
    std::size_t line = 0; ///< of BEGIN, from 1
    std::string text;
    std::string problem; ///< why it cannot be read; empty when it can
};

/// The cards of a text with or without a byte order mark. What stands outside of cards makes a "card" of its
/// own with a problem; blank lines do not count.
std::vector<CardText> findCards(std::string_view text);

} // namespace quelm

#endif
