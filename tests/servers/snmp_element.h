// The elements that SNMP messages are made of.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SERVERS_SNMP_ELEMENT_H
#define TESTS_SERVERS_SNMP_ELEMENT_H

#include <string>

namespace snmp {

/// One element: a tag, a length and the content, which is shorter than 65,536 bytes.
inline std::string element(unsigned char tag, const std::string& content)
{
    std::string text(1, static_cast<char>(tag));
    if (content.size() < 0x80) {
        text += static_cast<char>(content.size());
    } else {
        text += static_cast<char>(0x82);
        text += static_cast<char>(content.size() >> 8U);
        text += static_cast<char>(content.size() & 0xFFU);
    }
    return text + content;
}

} // namespace snmp

#endif
