// The texts that lists show of a recipient.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MODEL_LISTED_TEXTS_H
#define MODEL_LISTED_TEXTS_H

#include <array>
#include <string>

class Tarvik40FaxRecipient;

/// A recipient's texts in the order of a list's columns: name, fax number, organization, phone, e-mail,
/// mailbox. They belong to the recipient. A refresh shows every recipient there is, so this goes to the
/// fields and not by their keys, each of which the host would look up.
[[nodiscard]] std::array<const std::string*, 6> listedTexts(const Tarvik40FaxRecipient& recipient);

#endif
