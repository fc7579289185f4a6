// Where the people of the sample directory work, and what people are called there.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_AGENT_SAMPLE_OFFICES_H
#define DEVICE_AGENT_SAMPLE_OFFICES_H

#include <array>
#include <cstddef>
#include <span>

namespace quelm::device {

/// Texts are UTF-8 where nothing else is said.
struct Surname {
    const char* text;
    const char* ascii; ///< as it stands in mail addresses
};

/// Names of women and of men take turns in both lists of an office, in the same turn, where surnames tell the
/// two apart.
inline constexpr std::size_t namesEach = 8;

/// An office somewhere, and what people are called there.
struct Office {
    const char* organization;
    const char* domain;
    const char* city;
    const char* postalCode;
    std::array<const char*, namesEach> givenNames;
    std::array<Surname, namesEach> surnames;
};

/// Offices that do not exist, with names of twenty languages.
[[nodiscard]] std::span<const Office> sampleOffices();

} // namespace quelm::device

#endif
