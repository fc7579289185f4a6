// The library that reads and writes single cards, as a part that is loaded when the first card is.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_VCARD_LIBRARY_H
#define DRIVER_PHONEBOOK_VCARD_LIBRARY_H

#include <string>
#include <vector>

namespace quelm {

/// A parameter of a property, such as TYPE, with its values: two of "TYPE=work,fax", one of
/// "TYPE=\"work,fax\"".
struct CardParameter {
    std::string name;
    std::vector<std::string> values;

    friend bool operator==(const CardParameter&, const CardParameter&) = default;
};

/// A property of a card. Texts are UTF-8.
struct CardProperty {
    std::string group; ///< what stands ahead of the name's dot; empty without one
    std::string name;  ///< in the case in which it was written
    std::vector<CardParameter> parameters;
    std::vector<std::string> components; ///< of the value, unescaped: N has up to five, TEL one

    friend bool operator==(const CardProperty&, const CardProperty&) = default;
};

/// Implemented by the module "contacts". Its functions may be called by one thread at a time.
class VcardLibrary {
public:
    static constexpr const char* moduleName = "contacts";

    VcardLibrary() = default;
    virtual ~VcardLibrary() = default;
    VcardLibrary(const VcardLibrary&) = delete;
    VcardLibrary& operator=(const VcardLibrary&) = delete;

    /// The properties of a card, in its order. `card` goes from BEGIN:VCARD to END:VCARD; what cannot be read
    /// is left out.
    virtual std::vector<CardProperty> read(const std::string& card) const = 0;

    /// A card of version 3.0 of these properties and VERSION, which is not among them. Lines end in CRLF, the
    /// last one in none.
    virtual std::string write(const std::vector<CardProperty>& properties) const = 0;
};

} // namespace quelm

#endif
