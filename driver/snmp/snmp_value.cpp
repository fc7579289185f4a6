// Turns what SNMP carries into text.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/snmp/snmp_value.h"

#include "driver/device/object_identifier.h"

#include <glib.h>
#include <net-snmp/net-snmp-config.h>
#include <net-snmp/net-snmp-includes.h>

#include <algorithm>
#include <cstdint>
#include <memory>

namespace quelm {

namespace {

std::string addressText(const netsnmp_variable_list& variable)
{
    std::string text;
    for (std::size_t i = 0; i < variable.val_len; ++i)
        text += (text.empty() ? "" : ".") + std::to_string(variable.val.string[i]);
    return text;
}

std::string objectText(const netsnmp_variable_list& variable)
{
    ObjectIdentifier numbers;
    for (std::size_t i = 0; i < variable.val_len / sizeof(oid); ++i)
        numbers.push_back(static_cast<std::uint32_t>(variable.val.objid[i]));
    return dotted(numbers);
}

/// Unsigned numbers of 32 bits; the library keeps them in a signed long.
std::string unsignedText(const netsnmp_variable_list& variable)
{
    return std::to_string(static_cast<std::uint32_t>(*variable.val.integer));
}

std::string unsigned64Text(const netsnmp_variable_list& variable)
{
    const counter64& value = *variable.val.counter64;
    return std::to_string((static_cast<std::uint64_t>(value.high) << 32U) |
                          (static_cast<std::uint64_t>(value.low) & 0xFFFFFFFFU));
}

} // namespace

std::string shownText(std::string_view bytes)
{
    // A text of nothing but NULs has no last character at all, and is empty.
    bytes = bytes.substr(0, bytes.find_last_not_of('\0') + 1);
    std::string plain(bytes);
    std::ranges::replace(plain, '\0', ' '); // GLib's texts end at a NUL
    const std::unique_ptr<gchar, decltype(&g_free)> valid(
        g_utf8_make_valid(plain.data(), static_cast<gssize>(plain.size())), &g_free);
    std::string shown;
    for (const gchar* at = valid.get(); *at != '\0'; at = g_utf8_next_char(at))
        if (g_unichar_iscntrl(g_utf8_get_char(at)) != FALSE)
            shown += ' ';
        else
            shown.append(at, static_cast<std::size_t>(g_utf8_next_char(at) - at));
    return shown;
}

std::optional<std::string> valueText(const netsnmp_variable_list& variable)
{
    switch (variable.type) {
    case ASN_OCTET_STR:
        return shownText({reinterpret_cast<const char*>(variable.val.string), variable.val_len});
    case ASN_INTEGER:
        return std::to_string(*variable.val.integer);
    case ASN_COUNTER:
    case ASN_GAUGE: // and Unsigned32, which is the same on the wire
    case ASN_TIMETICKS:
    case ASN_UINTEGER:
        return unsignedText(variable);
    case ASN_COUNTER64:
        return unsigned64Text(variable);
    case ASN_OBJECT_ID:
        return objectText(variable);
    case ASN_IPADDRESS:
        return addressText(variable);
    default:
        return std::nullopt;
    }
}

} // namespace quelm
