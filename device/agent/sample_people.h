// The people of the sample directory, who do not exist.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_AGENT_SAMPLE_PEOPLE_H
#define DEVICE_AGENT_SAMPLE_PEOPLE_H

#include <string>
#include <vector>

namespace quelm::device {

/// Somebody with a fax number. Texts are UTF-8.
struct SamplePerson {
    std::string givenName;
    std::string surname;
    std::string organization;
    std::string city;
    std::string postalCode;
    std::string fax;   ///< "+1 555 0103 201": no two have the same
    std::string phone; ///< another number
    std::string mail;  ///< ASCII

    /// "Jürgen Müller": no two have the same.
    std::string fullName() const { return givenName + " " + surname; }
};

/// The same several hundred each time, those of an organization one behind the other.
[[nodiscard]] std::vector<SamplePerson> samplePeople();

/// All of them below `base` as LDIF, with the entries that they lie below, and a group for each organization.
/// `base` is one domain component ("dc=example").
[[nodiscard]] std::string sampleLdif(const std::string& base);

} // namespace quelm::device

#endif
