// Copies a phonebook record by record into the user's own folder.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/store/former_phonebook.h"

#include "base/atomic_file.h"
#include "base/error.h"
#include "base/translation.h"
#include "driver/store/phonebook_file.h"
#include "driver/store/record_store.h"

#include <sys/stat.h>
#include <unistd.h>

namespace quelm {

namespace {

/// A file with a second name may be one that somebody else chose.
bool isOwnPlainFile(const std::string& path)
{
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == geteuid() &&
           status.st_nlink == 1;
}

void copyPhonebook(const std::string& former, const std::string& present)
{
    try {
        const RecordStore records(former, RecordStore::Access::readOwn);
        // Another driver of the user's may have been faster, with the same phonebook.
        static_cast<void>(
            RecordStore::createUnlessThere(present, RecordStore::Readers::owner, records.records()));
    } catch (const Error& error) {
        // Translators: %s is a whole sentence: the phonebook "..." cannot be opened: ...
        throw Error(
            localized("your former phonebook cannot be taken over: %s; to begin with an empty one, move %s "
                      "away",
                      error.what(), former));
    }
}

} // namespace

void takeOverPhonebook(const std::string& former, const std::string& present)
{
    const std::string done = present + ".taken-over";
    if (phonebook_file::isTaken(done) || !isOwnPlainFile(former))
        return;
    if (!phonebook_file::isTaken(present))
        copyPhonebook(former, present);
    AtomicFile note(done);
    note.write(former + "\n");
    static_cast<void>(note.commitNew());
}

} // namespace quelm
