// What a device says about the directory that its users look recipients up in.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_AGENT_DIRECTORY_SETTINGS_H
#define DEVICE_AGENT_DIRECTORY_SETTINGS_H

#include <string>

namespace quelm::device {

/// Where the directory is, and which attributes of its entries hold what. Empty texts are objects that are
/// empty.
struct DirectorySettings {
    std::string server; ///< "127.0.0.1:3389"; empty for no directory
    std::string base;   ///< the entry below which it is searched
    std::string nameAttribute = "cn";
    std::string mailAttribute = "mail";
    std::string phoneAttribute = "telephoneNumber";
    std::string addressAttribute = "postalAddress";
    std::string officeAttribute = "physicalDeliveryOfficeName";
    std::string cityAttribute = "l";
    std::string stateAttribute = "st";
    std::string zipCodeAttribute = "postalCode";
    std::string countryAttribute = "c";
    std::string faxAttribute = "facsimileTelephoneNumber";
};

} // namespace quelm::device

#endif
