// The slot in which the component publishes its one fax job to the host.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HOST_FAX_SESSION_H
#define HOST_FAX_SESSION_H

#pragma GCC visibility push(default)

// Declared in here: a compiler may go by a class's first declaration for the visibility of its members.
class Tarvik40Fax;

extern "C" {
/// The fax job object. The host defines the slot, null at first; `InitializeFaxComponent` fills
/// it. The object is the component's and lives until the process ends.
///
/// One object serves every job of the process, and what it writes is for its host to look after:
///
/// - `serializeFaxCoverSheet` appends the recipients' names to `coverRecipientText`, and shows what that text
///   holds. A host empties it ahead of every cover page that it has written, of a preview, too:
///   `pFaxSession->coverRecipientText.clear()` (`model/fax_job.h`). Otherwise the second page of a process
///   names the recipients of the first.
/// - `dialingPrefix` and `creditCard` stay in the job when their boxes are unticked.
/// - Every text goes into the job as it stands, those of phonebooks and directories included, whatever they
///   hold. A host looks at the recipients (`getRecipientListCount`, `getFaxRecipientN`, `getRecipientData`)
///   before it has a job written, and refuses what holds line ends or quotation marks: a number with both
///   adds a destination.
extern Tarvik40Fax* pFaxSession;
}

#pragma GCC visibility pop

#endif
