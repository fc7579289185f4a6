// Writes files that appear whole or not at all.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_ATOMIC_FILE_H
#define BASE_ATOMIC_FILE_H

#include "base/pipe_wait.h"

#include <sys/types.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quelm {

/// One file being written. What is written goes to a hidden temporary file in the target's
/// folder; `commit` puts it in the target's place in one step. Until then, and when anything
/// fails, the target is what it was before; the temporary file is removed when the object is
/// destroyed and when SIGINT, SIGTERM or SIGHUP ends the program. What a process that was killed left, the
/// next one of the same user that writes in that folder removes. Until it is committed the temporary file is
/// for this process's user alone.
///
/// A target that is a device, a fifo or a socket-like node (/dev/null) has no content to protect
/// and is written directly; a fifo's reader is waited for within limits. A symbolic link stays one: the file
/// that it names is replaced. In a sticky folder where others may write, such as /tmp, a stranger's link is
/// not followed, and a stranger's file not written (see base/write_target.h). A new file gets the permissions
/// that the umask leaves; a replaced one keeps those it had.
///
/// Every failure is a quelm::Error that names the target and the reason. The process ignores SIGXFSZ from
/// then on, so that a size limit is reported like a full disk.
class AtomicFile {
public:
    /// Starts a file at `path`, whose folder exists.
    explicit AtomicFile(const std::string& path, const PipeLimits& limits = {});
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// Appends bytes. They are buffered.
    void write(std::string_view bytes);

    /// Hands out the file to write to with system calls or to give to another program, behind
    /// what was written so far. The object keeps owning it.
    int descriptor();

    /// From `commit` on only the file's owner can read and write it, whatever the umask says and the file
    /// that it replaces had. A target written directly stays as it is.
    void restrictToOwner();

    /// A new file lets nobody but its owner write, whatever the umask leaves; one that is replaced keeps what
    /// it had.
    void denyWritingToOthers();

    /// Writes everything durably into a file of this name in the target's folder, which `commit` then puts in
    /// its place, and returns its inode: by the two it can be told after a sudden end whether that happened.
    /// Nobody sweeps the file up but this object. Nothing, and nothing written, for a target that is written
    /// directly. Called once, ahead of `commit`.
    [[nodiscard]] std::optional<ino_t> prepare(const std::string& name);

    /// Writes everything durably and puts the file in its place. Called once, last.
    void commit();

    /// Like `commit`, but never replaces: false, and nothing changed, when something of that
    /// name exists by now.
    [[nodiscard]] bool commitNew();

    /// The target as it was given.
    const std::string& path() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

/// Removes the temporary files of all AtomicFiles that are being written. Safe to call in a
/// signal handler: for programs that handle SIGINT, SIGTERM or SIGHUP themselves, where AtomicFile
/// leaves their handler in place.
void removeUnfinishedFiles() noexcept;

} // namespace quelm

#endif
