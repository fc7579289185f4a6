// A recipient's destination lines in the print stream.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "model/recipient.h"

const char* Tarvik40FaxRecipient::assembleFaxRcptPDLString(char* dialingPrefix, char* linePrefix)
{
    pdlString = linePrefix;
    pdlString += "OID_ATT_FAX_DESTINATION_PHONE \"";
    if (dialingPrefix != nullptr) {
        pdlString += dialingPrefix;
        pdlString += ","; // the pause between prefix and number
    }
    pdlString += cleansedFaxNumber;
    pdlString += "\";\r\n";
    if (!recipientMailbox.empty()) {
        pdlString += linePrefix;
        pdlString += "OID_ATT_FAX_MAILBOX \"" + recipientMailbox + "\";\r\n";
    }
    return pdlString.c_str();
}
