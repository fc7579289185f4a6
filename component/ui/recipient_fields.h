// Text fields of a dialog that hold a recipient's data.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef UI_RECIPIENT_FIELDS_H
#define UI_RECIPIENT_FIELDS_H

class Tarvik40FaxRecipient;

/// The names of a dialog's text fields, one per recipient field.
struct RecipientFields {
    const char* number;
    const char* name;
    const char* organization;
    const char* phone;
    const char* email;
    const char* mailbox;
};

/// Shows the recipient's data in the fields; empties them for null.
void showRecipient(const RecipientFields& fields, Tarvik40FaxRecipient* recipient);

/// Checks name and fax number as required fields and reads them into the out-texts (4,096 bytes
/// each). On false the error window is shown.
[[nodiscard]] bool readRequiredFields(const RecipientFields& fields, char* name, char* number);

/// Makes `recipient` a single one with that name and fax number, and stores the other fields. A
/// field left empty changes nothing, so an edited recipient keeps what the user cleared. A phone
/// number that the host's check rejects is silently not stored and emptied in the dialog.
void storeRecipient(const RecipientFields& fields, const char* name, const char* number,
                    Tarvik40FaxRecipient& recipient);

#endif
