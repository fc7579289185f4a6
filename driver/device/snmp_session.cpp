// Finds the device, asks it, and puts what went wrong into words.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/device/snmp_session.h"

#include "base/error.h"
#include "base/module.h"
#include "base/system_reason.h"
#include "base/translation.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <utility>

namespace quelm {

namespace {

using Clock = std::chrono::steady_clock;

/// "3", "0.25".
std::string inSeconds(std::chrono::milliseconds time)
{
    char text[32];
    std::snprintf(text, sizeof text, "%g", std::chrono::duration<double>(time).count());
    return text;
}

} // namespace

SnmpSession::SnmpSession(DeviceSettings given)
    : settings_(std::move(given)), address_(parseNetworkAddress(settings_.address, snmpPort))
{
}

SnmpReply SnmpSession::connectAndAsk(const ObjectIdentifier& object, Deadline deadline)
{
    const auto addresses = findDevice(address_, deadline);
    SnmpReply worst;
    worst.kind = SnmpReply::Kind::refused;
    for (std::size_t next = 0; next < addresses.size(); ++next) {
        const auto share = (deadline - Clock::now()) / static_cast<int>(addresses.size() - next);
        connection_.reset(); // before another one is made
        connection_ = part<SnmpLibrary>().connect(settings_, addresses[next]);
        SnmpReply reply = connection_->get(object, Clock::now() + share);
        if (reply.answered())
            return reply;
        if (worst.kind != SnmpReply::Kind::silent)
            worst = std::move(reply);
    }
    return worst;
}

SnmpReply SnmpSession::ask(const ObjectIdentifier& object, Deadline deadline)
{
    if (connection_ != nullptr) {
        const auto now = Clock::now();
        SnmpReply reply = connection_->get(object, now + (deadline - now) / 2);
        if (reply.answered() && reply.kind != SnmpReply::Kind::report)
            return reply;
        // Perhaps it has another address by now; or it was exchanged, and version 3's users are
        // another's than the new one's.
    }
    return connectAndAsk(object, deadline);
}

std::string SnmpSession::silence() const
{
    const std::string seconds = inSeconds(settings_.timeout);
    if (settings_.version == SnmpVersion::v3)
        return localized("the device %s did not answer over SNMP within %s s; check its address, that it is "
                         "switched on, and the user's passphrases",
                         toText(address_), seconds);
    return localized("the device %s did not answer over SNMP within %s s; check its address, that it is "
                     "switched on, and the community",
                     toText(address_), seconds);
}

std::string SnmpSession::refusal(long systemError) const
{
    if (systemError == ECONNREFUSED)
        return localized("the device %s does not serve SNMP on that port; switch SNMP on at the device, or "
                         "check the port",
                         toText(address_));
    return localized("the device %s cannot be reached: %s; check its address and the network",
                     toText(address_), systemReason(static_cast<int>(systemError)));
}

std::string SnmpSession::userTrouble(long report) const
{
    const std::string device = toText(address_);
    const std::string& user = settings_.user.name;
    switch (report) {
    case UserReport::unknownUser:
        return localized("the device %s does not know the SNMP user \"%s\"; check the user's name", device,
                         user);
    case UserReport::wrongPassphrase:
        return localized("the device %s refuses the SNMP user \"%s\"; check authentication and "
                         "authentication-passphrase",
                         device, user);
    case UserReport::undecryptable:
        return localized("the device %s cannot decrypt what the SNMP user \"%s\" asks; check privacy and "
                         "privacy-passphrase",
                         device, user);
    case UserReport::unsupportedSecurity:
        return localized(
            "the device %s does not offer that authentication or privacy to the SNMP user \"%s\"; "
            "check authentication and privacy",
            device, user);
    default:
        return localized("the device %s refuses the SNMP user \"%s\"; check user, authentication and privacy",
                         device, user);
    }
}

std::string SnmpSession::troubleWith(const SnmpReply& reply, const ObjectIdentifier& object) const
{
    switch (reply.kind) {
    case SnmpReply::Kind::error:
        return localized("the device %s does not tell the object %s: %s; check its access rights",
                         toText(address_), dotted(object), reply.text);
    case SnmpReply::Kind::rubbish:
        return localized("the device %s does not answer what it was asked; check that it is a device that "
                         "serves SNMP",
                         toText(address_));
    case SnmpReply::Kind::report:
        return userTrouble(reply.number);
    case SnmpReply::Kind::refused:
        return refusal(reply.number);
    default:
        return silence();
    }
}

SnmpAnswer SnmpSession::get(const ObjectIdentifier& object)
{
    using Kind = SnmpAnswer::Kind;
    SnmpReply reply;
    try {
        reply = ask(object, Clock::now() + settings_.timeout);
    } catch (const Error& error) {
        connection_.reset();
        return {Kind::deviceFailed, "", error.what()};
    }
    switch (reply.kind) {
    case SnmpReply::Kind::value:
        return {Kind::value, std::move(reply.text), ""};
    case SnmpReply::Kind::noObject:
        return {Kind::noObject, "", ""};
    case SnmpReply::Kind::error:
        // Rights are the user's, for all objects; other errors are this object's.
        if (reply.number != noRights)
            return {Kind::objectRefused, "", troubleWith(reply, object)};
        break;
    default:
        break;
    }
    connection_.reset();
    return {Kind::deviceFailed, "", troubleWith(reply, object)};
}

} // namespace quelm
