// Makes people of given names and surnames that go together.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/agent/sample_people.h"

#include "device/agent/sample_offices.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace quelm::device {

namespace {

constexpr std::size_t peopleEach = 2 * namesEach;

std::string digits(std::size_t number, std::size_t places)
{
    std::string text = std::to_string(number);
    return text.insert(0, places - std::min(places, text.size()), '0');
}

SamplePerson personOf(std::size_t officeNumber, std::size_t index)
{
    const Office& office = sampleOffices()[officeNumber];
    const Surname& surname = office.surnames.at(index % namesEach);
    // The second round through the surnames begins two given names later, so that none comes twice.
    const char* givenName = office.givenNames.at((index + 2 * (index / namesEach)) % namesEach);
    // Numbers with 555 01 are nobody's.
    const std::string line = "+1 555 01" + digits(officeNumber, 2);
    return {givenName,
            surname.text,
            office.organization,
            office.city,
            office.postalCode,
            line + " 2" + digits(index + 1, 2),
            line + " 1" + digits(index + 1, 2),
            std::string(surname.ascii) + "." + digits(index + 1, 2) + "@" + office.domain + ".example"};
}

/// LDIF takes any bytes in base64.
std::string base64(std::string_view bytes)
{
    constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr unsigned bitsOfByte = 8;
    constexpr unsigned bitsOfDigit = 6;
    constexpr std::uint32_t maskOfDigit = 0x3F;
    std::string text;
    std::uint32_t waiting = 0;
    unsigned bits = 0;
    for (const char byte : bytes) {
        waiting = (waiting << bitsOfByte) | static_cast<unsigned char>(byte);
        for (bits += bitsOfByte; bits >= bitsOfDigit;) {
            bits -= bitsOfDigit;
            text += alphabet[(waiting >> bits) & maskOfDigit];
        }
    }
    if (bits != 0)
        text += alphabet[(waiting << (bitsOfDigit - bits)) & maskOfDigit];
    constexpr std::size_t digitsOfGroup = 4;
    return text.append((digitsOfGroup - text.size() % digitsOfGroup) % digitsOfGroup, '=');
}

std::string line(std::string_view attribute, std::string_view value)
{
    return std::string(attribute) + ":: " + base64(value) + "\n";
}

std::string unit(const std::string& base, const std::string& name)
{
    return "dn: ou=" + name + "," + base + "\nobjectClass: organizationalUnit\nou: " + name + "\n\n";
}

std::string nameOf(const SamplePerson& person, const std::string& base)
{
    return "cn=" + person.fullName() + ",ou=people," + base;
}

std::string entryOf(const SamplePerson& person, const std::string& base)
{
    return line("dn", nameOf(person, base)) + "objectClass: inetOrgPerson\n" + line("cn", person.fullName()) +
           line("sn", person.surname) + line("givenName", person.givenName) + line("o", person.organization) +
           line("l", person.city) + line("postalCode", person.postalCode) +
           line("facsimileTelephoneNumber", person.fax) + line("telephoneNumber", person.phone) +
           line("mail", person.mail) + "\n";
}

} // namespace

std::vector<SamplePerson> samplePeople()
{
    std::vector<SamplePerson> people;
    for (std::size_t office = 0; office < sampleOffices().size(); ++office)
        for (std::size_t index = 0; index < peopleEach; ++index)
            people.push_back(personOf(office, index));
    return people;
}

std::string sampleLdif(const std::string& base)
{
    const std::string component = base.substr(base.find('=') + 1);
    std::string text = "dn: " + base +
                       "\nobjectClass: dcObject\nobjectClass: organization\ndc: " + component +
                       "\no: " + component + "\n\n" + unit(base, "people") + unit(base, "groups");
    const std::vector<SamplePerson> people = samplePeople();
    for (const SamplePerson& person : people)
        text += entryOf(person, base);
    for (auto member = people.begin(); member != people.end();) {
        const std::string& organization = member->organization;
        text += line("dn", "cn=" + organization + ",ou=groups," + base) + "objectClass: groupOfNames\n" +
                line("cn", organization);
        for (; member != people.end() && member->organization == organization; ++member)
            text += line("member", nameOf(*member, base));
        text += "\n";
    }
    return text;
}

} // namespace quelm::device
