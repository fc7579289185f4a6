// Joins the lists of a fax job, so that none is left with a recipient that another one destroyed.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MODEL_JOINED_LISTS_H
#define MODEL_JOINED_LISTS_H

class Tarvik40FaxRecipientList;

/// From now on, until one of them is destroyed: a recipient that one of the lists destroys leaves the other
/// two. In `members` the places that held it stay, and hold null; the others lose theirs. In
/// model/recipient_list.cpp, as it is a list's own removal that does this, whoever asked for it.
void joinLists(Tarvik40FaxRecipientList& recipients, Tarvik40FaxRecipientList& picks,
               Tarvik40FaxRecipientList& members);

#endif
