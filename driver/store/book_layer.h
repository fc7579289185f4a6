// SQLite's way to a phonebook's files: it opens what was looked at, and no journal of a stranger.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_STORE_BOOK_LAYER_H
#define DRIVER_STORE_BOOK_LAYER_H

#include <sys/stat.h>

#include <string>

namespace quelm::book_layer {

/// The name of the file layer that phonebooks are opened with (the last parameter of sqlite3_open_v2).
///
/// SQLite takes whatever lies under a file's name, and believes what it finds beside it in a journal. In a
/// folder that others may write to, both may be laid there: a link, a fifo, a journal that changes the
/// numbers that are dialled. This layer hands out a phonebook only if it is the very file that was looked at,
/// a journal only if it is a plain file of somebody who may have written it, and waits for neither.
const char* name();

/// While it lives, the layer opens that phonebook. Others that live for the same path have their say as well.
class Watch {
public:
    /// `path` is absolute and without links; `looked` is the plain file that was found there.
    Watch(std::string path, const struct stat& looked);
    ~Watch();
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

private:
    std::string path_;
    unsigned long number_;
};

/// The name of a journal beside the phonebook that does not count, as neither the owner of the phonebook nor
/// the user nor root has made it, or as it is no plain file; empty when there is none.
[[nodiscard]] std::string foreignJournal(const std::string& path, uid_t owner);

} // namespace quelm::book_layer

#endif
