// The factory of the rows that a list refresh creates.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MODEL_LIST_REFRESH_H
#define MODEL_LIST_REFRESH_H

class GTKObject;

/// Creates the rows of refreshed lists; made on the first refresh and kept until the process ends.
extern GTKObject* listItemFactory;

#endif
