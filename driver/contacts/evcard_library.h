// Reads and writes cards by the address book's library.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CONTACTS_EVCARD_LIBRARY_H
#define DRIVER_CONTACTS_EVCARD_LIBRARY_H

#include "driver/phonebook/vcard_library.h"

namespace quelm {

class EvcardLibrary final : public VcardLibrary {
public:
    std::vector<CardProperty> read(const std::string& card) const override;
    std::string write(const std::vector<CardProperty>& properties) const override;
};

} // namespace quelm

#endif
