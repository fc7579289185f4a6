// One fax destination: a single recipient, or a group kept in a phonebook.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MODEL_RECIPIENT_H
#define MODEL_RECIPIENT_H

#include <array>
#include <string>
#include <string_view>

class QuelmLegacyDatabase;

/// A recipient's types; a new recipient has none (0) until its creator sets one.
inline constexpr int SINGLE_RECIPIENT = 1;
inline constexpr int GROUP_RECIPIENT = 2;

/// One fax destination. All of its data is UTF-8 text behind keyed accessors:
///
///     Tarvik40FaxRecipient ann;
///     ann.setRecipientType(SINGLE_RECIPIENT);
///     ann.setRecipientData("RecipientName", "Ann");
///     ann.setRecipientData("RecipientFaxNumber", "(0) 555-1234");  // dialled as 05551234
///
/// The keys: "RecipientName", "RecipientOrganization", "RecipientPhone", "RecipientFaxNumber",
/// "RecipientEmail", "RecipientMailbox", "GroupMemberList", "SenderName", "SenderOrganization",
/// "SenderPhone", "SenderFaxNumber", "SenderEmail", "CoverNote", "Year", "Month", "MonthDay", "Hour",
/// "Minute". "Key" is a known word that both accessors refuse: the recipient key, the name
/// immediately followed by the fax number as typed, is always formed and never stored.
class __attribute__((visibility("default"))) Tarvik40FaxRecipient {
public:
    // model/recipient.cpp: the texts, and what is formed of them.

    /// All texts empty, no type.
    Tarvik40FaxRecipient();
    ~Tarvik40FaxRecipient();
    Tarvik40FaxRecipient(const Tarvik40FaxRecipient&) = delete;
    Tarvik40FaxRecipient& operator=(const Tarvik40FaxRecipient&) = delete;

    void setRecipientType(int type);
    int getRecipientType();

    /// The text of a field, valid until that field changes or the recipient is destroyed. Null for
    /// an empty field, for a null or unknown key, and for "Key".
    const char* getRecipientData(const char* key);

    /// Sets a field to a copy of `value`. Setting "RecipientFaxNumber" also works out the number to
    /// dial. False, and nothing changed, for a null or unknown key, for "Key" and for a null value.
    bool setRecipientData(const char* key, const char* value);
    bool setRecipientData(const char* key, std::string& value);

    /// Works out the number to dial: the fax number without "(", ")", blanks and "-".
    void cleanseFaxNumber();

    /// Replaces `out` with the recipient as an XML fragment, lines ended by "\r\n". Field texts
    /// stand in it as they are. Always true.
    bool assembleXMLRecipientData(std::string* out);

    // output/recipient_lines.cpp: what the device dials.

    /// The recipient's lines in the print stream: the destination and, with a mailbox, the mailbox,
    /// each led by `linePrefix`. `dialingPrefix` is dialled first; null for none. The text
    /// is valid until the next call on this recipient or its destruction.
    const char* assembleFaxRcptPDLString(char* dialingPrefix, char* linePrefix);

    // phonebook/record_writer.cpp: the recipient as a phonebook's record.

    /// Saves the recipient in a phonebook and writes the phonebook to its file: a single recipient as
    /// an entry, a group as a group. False for a null database, another type, or when saving or
    /// writing failed; a record may then be in the database without being in its file.
    bool serializeRecipientToDatabase(QuelmLegacyDatabase* database);
    bool serializeUserToDatabase(QuelmLegacyDatabase* database);
    bool serializeGroupToDatabase(QuelmLegacyDatabase* database);

private:
    // Both in model/recipient.cpp; their headers stay inside the component.
    friend bool hasRecipientKey(const Tarvik40FaxRecipient& recipient, std::string_view key);
    friend std::array<const std::string*, 6> listedTexts(const Tarvik40FaxRecipient& recipient);

    // model/recipient.cpp reads and writes the fields, by their keys. Order and types are part of what hosts
    // were built against.
    int recipientType = 0;
    std::string recipientName;
    std::string recipientOrganization;
    std::string recipientPhone;
    std::string recipientFaxNumber;
    std::string cleansedFaxNumber; ///< what output/recipient_lines.cpp writes
    std::string recipientEmail;
    std::string recipientMailbox;

    // Kept for hosts; the job's own sender and note go onto the cover sheet, which shows its own time.
    std::string senderName;
    std::string senderOrganization;
    std::string senderPhone;
    std::string senderFaxNumber;
    std::string senderEmail;
    std::string coverNote;
    std::string year;
    std::string month;
    std::string monthDay;
    std::string hour;
    std::string minute;

    std::string groupMemberText; ///< phonebook/record_writer.cpp saves it
    std::string pdlString;       ///< what assembleFaxRcptPDLString() returned last

    std::string* field(const char* key);
};

#endif
