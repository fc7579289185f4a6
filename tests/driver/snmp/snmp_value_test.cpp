// What a device sends, as text.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/snmp/snmp_value.h"

#include <gtest/gtest.h>
#include <net-snmp/net-snmp-config.h>
#include <net-snmp/net-snmp-includes.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using quelm::shownText;

/// The text of a value of this kind.
std::optional<std::string> textOf(u_char type, const void* value, std::size_t size)
{
    const oid name[] = {1, 3, 6};
    netsnmp_variable_list* list = nullptr;
    snmp_varlist_add_variable(&list, name, 3, type, value, size);
    const std::unique_ptr<netsnmp_variable_list, decltype(&snmp_free_varbind)> owner(list,
                                                                                     &snmp_free_varbind);
    return quelm::valueText(*list);
}

std::optional<std::string> textOf(u_char type, long value) { return textOf(type, &value, sizeof value); }

std::optional<std::string> textOf(const std::string& bytes)
{
    return textOf(ASN_OCTET_STR, bytes.data(), bytes.size());
}

TEST(SnmpValueTest, OctetStringsAreText)
{
    EXPECT_EQ(textOf("ldap.example:389"), "ldap.example:389");
    EXPECT_EQ(textOf("Größe שלום"), "Größe שלום");
    EXPECT_EQ(textOf(""), "");
}

TEST(SnmpValueTest, BytesThatAreNoUtf8AreReplaced)
{
    EXPECT_EQ(shownText("Gr\xF6\xDF"), "Gr\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(shownText("cut \xE2\x82"), "cut \xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(SnmpValueTest, NulsAtTheEndAreDropped)
{
    EXPECT_EQ(shownText(std::string("name\0\0\0", 7)), "name");
    EXPECT_EQ(shownText(std::string(3, '\0')), "");
}

TEST(SnmpValueTest, OtherControlCharactersAreBlanks)
{
    EXPECT_EQ(shownText(std::string("a\0b\r\nc\td\x1b[1m\x7f", 13)), "a b  c d [1m ");
    EXPECT_EQ(shownText("next\xC2\x85line"), "next line");
}

TEST(SnmpValueTest, NumbersAreDecimal)
{
    EXPECT_EQ(textOf(ASN_INTEGER, -2147483648L), "-2147483648");
    EXPECT_EQ(textOf(ASN_COUNTER, 4294967295L), "4294967295");
    EXPECT_EQ(textOf(ASN_GAUGE, 4294967295L), "4294967295");
    EXPECT_EQ(textOf(ASN_TIMETICKS, 360000L), "360000");
    const counter64 big{0xFFFFFFFF, 0xFFFFFFFE};
    EXPECT_EQ(textOf(ASN_COUNTER64, &big, sizeof big), "18446744073709551614");
}

TEST(SnmpValueTest, ObjectsAndAddressesAreDotted)
{
    const oid object[] = {1, 3, 6, 1, 4, 1, 32473};
    EXPECT_EQ(textOf(ASN_OBJECT_ID, object, sizeof object), "1.3.6.1.4.1.32473");
    const unsigned char address[] = {10, 0, 0, 255};
    EXPECT_EQ(textOf(ASN_IPADDRESS, address, sizeof address), "10.0.0.255");
}

TEST(SnmpValueTest, WhatIsNoValueHasNoText)
{
    const u_char withoutValue[] = {SNMP_NOSUCHOBJECT, SNMP_NOSUCHINSTANCE, SNMP_ENDOFMIBVIEW, ASN_NULL};
    for (const u_char type : withoutValue)
        EXPECT_FALSE(textOf(type, nullptr, 0)) << type;
    EXPECT_FALSE(textOf(ASN_OPAQUE, "x", 1));
}

} // namespace
