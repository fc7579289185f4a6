// What the versions of SNMP have, and what they lack.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/config/device_fit.h"

#include "base/translation.h"

#include <cstddef>

namespace quelm {

namespace {

constexpr std::size_t longestCommunity = 255;
constexpr std::size_t shortestPassphrase = 8; // the user model's own bound
constexpr const char* knownCommunity = "public";

/// What is missing or too much beside one method of version 3.
std::string methodMismatch(const std::string& method, const char* methodKey, const std::string& passphrase,
                           const char* passphraseKey)
{
    if (method.empty() && passphrase.empty())
        return "";
    if (method.empty())
        return localized("has %s at [device] without %s; write both or neither", passphraseKey, methodKey);
    if (passphrase.empty())
        return localized("has %s at [device] without %s; write both or neither", methodKey, passphraseKey);
    if (passphrase.size() < shortestPassphrase)
        return localized("has fewer than 8 characters at [device] %s; devices take none so short",
                         passphraseKey);
    return "";
}

} // namespace

std::string deviceMismatch(const DeviceSettings& device)
{
    const SnmpUser& user = device.user;
    const bool hasUser = !user.name.empty() || !user.authentication.empty() || !user.privacy.empty() ||
                         !user.authenticationPassphrase.empty() || !user.privacyPassphrase.empty();
    if (device.community.size() > longestCommunity)
        return localized("has a community of more than 255 bytes at [device]; write the device's");
    if (device.version != SnmpVersion::v3)
        return hasUser ? localized("has a user, authentication or privacy at [device], which only version 3 "
                                   "has; add version=3")
                       : "";
    if (user.name.empty())
        return localized("has version=3 at [device] without a user; add user=NAME");
    if (device.community != knownCommunity)
        return localized("has a community at [device], which version 3 does not have; remove it, or write "
                         "version=2c");
    std::string mismatch = methodMismatch(user.authentication, "authentication",
                                          user.authenticationPassphrase, "authentication-passphrase");
    if (mismatch.empty())
        mismatch = methodMismatch(user.privacy, "privacy", user.privacyPassphrase, "privacy-passphrase");
    if (mismatch.empty() && user.authentication.empty() && !user.privacy.empty())
        mismatch = localized("has privacy at [device] without authentication, which SNMP does not have; add "
                             "authentication and authentication-passphrase");
    return mismatch;
}

bool holdsSecret(const DeviceSettings& device)
{
    return device.community != knownCommunity || !device.user.authenticationPassphrase.empty() ||
           !device.user.privacyPassphrase.empty();
}

} // namespace quelm
