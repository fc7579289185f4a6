// Guesses charsets by uchardet.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CHARSETS_UCHARDET_GUESSER_H
#define DRIVER_CHARSETS_UCHARDET_GUESSER_H

#include "driver/phonebook/charset_guesser.h"

namespace quelm {

class UchardetGuesser final : public CharsetGuesser {
public:
    std::string guess(std::string_view text) const override;
};

} // namespace quelm

#endif
