// The recipient key by which duplicates are recognised.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MODEL_RECIPIENT_KEY_H
#define MODEL_RECIPIENT_KEY_H

#include <string_view>

class Tarvik40FaxRecipient;

/// True when the recipient's name immediately followed by its fax number as typed equals `key`, byte
/// for byte. Allocates nothing.
[[nodiscard]] bool hasRecipientKey(const Tarvik40FaxRecipient& recipient, std::string_view key);

#endif
