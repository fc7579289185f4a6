// The one fax job: recipients, cover sheet settings, dialing settings, print-stream mode.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MODEL_FAX_JOB_H
#define MODEL_FAX_JOB_H

#include "model/recipient_list.h"

#include <string>

class AbstractPDLWriter;

/// Which list an operation means.
inline constexpr int RECIPIENT_LIST = 1;     ///< the job's recipients, in "LanFax Recipient List"
inline constexpr int PB_ENTRY_LIST = 2;      ///< rows of the phonebook in "Fax PB List", not held here
inline constexpr int CUR_RECIPIENT_LIST = 3; ///< picks not yet accepted, in "Fax Cur Recipient List"
inline constexpr int GROUP_MEMBER_LIST = 4;  ///< members being saved, in "LanFaxAddGroup Group List"

/// Values of `Tarvik40Fax::pdlMode`.
inline constexpr int PDL_MODE_DSC = 1;
inline constexpr int PDL_MODE_PJL = 2;

/// The fax job. Start-up makes one, publishes it in `pFaxSession` and as the resource
/// "FaxSession"; it lives until the process ends.
///
/// At print time a host sets the mode, asks whether there is anything to send, and has the job
/// written:
///
///     job->setFaxParameter("PDLMode", "PJL");
///     if (job->CheckFaxInfo()) {
///         job->serializeFaxJob(&writer);
///         bool cover = false;
///         job->getFaxParameter("flFaxCoverPage", &cover);
///         if (cover) job->serializeFaxCoverSheet(&writer);
///     }
///
/// A recipient belongs to the list that it was added to; removing destroys it. The group member list
/// owns nothing: it holds pointers of `recipientList`. A place there whose recipient was removed since holds
/// null and still counts; showing, walking and naming the members passes over it.
///
/// The class is one for the sake of its hosts; its functions are defined in the rooms whose subject they
/// are, which a line ahead of each group names. Order and types of the data are part of what hosts were
/// built against: nothing may be moved, taken out or put in between.
class __attribute__((visibility("default"))) Tarvik40Fax {
public:
    // model/fax_job.cpp: the job's keyed parameters and its lists.

    /// Empty lists, DSC mode, nothing chosen.
    Tarvik40Fax();
    Tarvik40Fax(const Tarvik40Fax&) = delete;
    Tarvik40Fax& operator=(const Tarvik40Fax&) = delete;

    /// "flFaxCoverPage" writes one byte (a bool) to `out`, "CurrentFaxRecipientIndex" an int: the
    /// selected row of "Fax PB List", -1 for none. False, and `out` untouched, for any other key.
    bool getFaxParameter(char* key, void* out);

    /// "PDLMode" with the text "PJL" chooses PJL comments; any other text chooses DSC comments.
    /// Other keys change nothing. Always true.
    bool setFaxParameter(char* key, void* value);

    /// Appends to the picks (`toTmp`) or to the job's recipients. The list then owns the recipient.
    /// False for null.
    bool addFaxRecipient(Tarvik40FaxRecipient* recipient, bool toTmp);

    /// The recipient of the selected row: of the job's list (1) or of the picks (3). Null without a
    /// selection, when it cannot be read, and for every other list.
    Tarvik40FaxRecipient* getCurrentFaxRecipient(int list);

    /// The recipient at position `n` from 0 of list 1 or 3, null for every other list.
    Tarvik40FaxRecipient* getFaxRecipientN(int n, int list);

    /// The size of list 1, 3 or 4. For 2 the size of list 1 stands in; otherwise 0.
    int getRecipientListCount(int list);

    /// Takes out and destroys a recipient of the picks (`fromTmp`) or of the job's. False when it is
    /// not in that list.
    bool removeFaxRecipient(Tarvik40FaxRecipient* recipient, bool fromTmp);
    bool removeFaxRecipientN(int n, bool fromTmp);

    /// True when a recipient of the job or of the picks has that key (name followed by fax number).
    /// False for an empty key.
    bool isFaxRecipientAlreadyInList(std::string& key);

    /// Destroys all recipients of list 1, 3 or 4, which then have left the other lists, too. False, and
    /// nothing done, for another one.
    bool removeAllFaxRecipients(int list);

    /// Empties list 1, 3 or 4 without destroying anything.
    void clearAllFaxRecipients(int list);

    // model/list_refresh.cpp: a list's recipients in its widget.

    /// Shows the list's recipients in its widget; for the job's list also sets the buttons beside it.
    void updatePBEntryList(int list);

    // model/fax_job.cpp: the picks, and the group being saved.

    /// The picks join the job's recipients.
    void appendTmpFaxRecipientList();

    /// The member text of the group being saved: ",u" and the name for every member that has
    /// one. False, and `out` empty, without members, or when all of them were removed since.
    bool assembleGroupMemberListData(std::string& out);

    /// Fills the group member list with the job's recipients, or forgets them.
    void setGroupRecipientList(bool clear);

    // output/job_attributes.cpp: the lines that make the device dial.

    /// Writes all job attributes. 0 for a null writer, else 1.
    int serializeFaxJob(AbstractPDLWriter* writer);
    void serializeFaxOptions(AbstractPDLWriter* writer);
    int serializeRecipients(AbstractPDLWriter* writer);
    void serializeSendAfterOption(AbstractPDLWriter* writer, std::string& out);

    // ui/fax_dialog.cpp: what a host asks ahead of printing.

    /// 1 when the job has a recipient; otherwise shows the fax dialog and returns 0.
    int CheckFaxInfo();

    // output/cover_sheet.cpp: the extra page ahead of the document.

    /// Writes the cover page. 1 when it was written whole, else 0.
    int serializeFaxCoverSheet(AbstractPDLWriter* writer);

    /// Composes the recipient text of the cover sheet; may append to what `text` holds. False
    /// when there is no recipient to name.
    bool getCoverSheetRecipientNameText(std::string* text);

    // ui/recipient_dialog.cpp and ui/recipient_details.cpp: the dialogs of one recipient.

    /// Fills the recipient dialog from `recipient`, or empties it for null, and shows it. True.
    bool invokeRecipientInfoUI(Tarvik40FaxRecipient* recipient);

    /// Shows the group dialog for a group. False for null.
    bool invokeGroupInfoUI(Tarvik40FaxRecipient* group);

    // The lists, as model/fax_job.cpp keeps them.
    Tarvik40FaxRecipientList recipientList;
    Tarvik40FaxRecipientList tmpRecipientList;
    Tarvik40FaxRecipientList groupMemberList;

    std::string coverRecipientText; ///< output/cover_sheet.cpp alone: it composes the text, and keeps it

    // setFaxParameter() writes these, output/job_attributes.cpp reads them.
    int pdlMode = PDL_MODE_DSC;
    std::string attributePrefix = "%%";

    // The cover sheet's dialog (ui/cover_sheet_dialog.cpp) and, for `faxCoverPage` and `coverNotes`, the fax
    // dialog (ui/fax_dialog.cpp) write these; output/cover_sheet.cpp reads them, and hosts ask for
    // `faxCoverPage`.
    std::string senderFaxNumber;
    std::string senderName;
    std::string senderOrganization;
    std::string senderPhone;
    std::string senderEmail;
    bool faxCoverPage = false;
    bool showRecipientInfo = false;
    bool showSenderInfo = false;
    bool showCustomText = false;
    std::string coverNotes; ///< one PostScript string with a blank on each side: " (Call me) "

    // The fax dialog writes these, output/job_attributes.cpp reads them.
    std::string dialingPrefix;
    std::string creditCard;

    std::string customText; ///< stands on the cover sheet for the recipients' names; see `showCustomText`

    // The boxes of the preferences tab (ui/fax_dialog.cpp) write these. Nothing in the component reads them:
    // they keep their places because hosts were built against this layout.
    bool promptOnDuplicates = false;
    bool promptOnRemoveOne = false;
    bool alwaysUseCurrentList = false;
    bool alwaysUseCurrentCoverNotes = false;

private:
    Tarvik40FaxRecipientList* listFor(int list);
};

#endif
