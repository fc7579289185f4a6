// Hands a text to uchardet.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/charsets/uchardet_guesser.h"

#include <uchardet.h>

#include <memory>
#include <new>

namespace quelm {

std::string UchardetGuesser::guess(std::string_view text) const
{
    const std::unique_ptr<uchardet, decltype(&uchardet_delete)> detector(uchardet_new(), uchardet_delete);
    if (detector == nullptr)
        throw std::bad_alloc();
    if (uchardet_handle_data(detector.get(), text.data(), text.size()) != 0)
        return "";
    uchardet_data_end(detector.get());
    return uchardet_get_charset(detector.get());
}

} // namespace quelm
