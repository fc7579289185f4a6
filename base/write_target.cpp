// Walks along a path by descriptors, so that what was looked at is what is followed.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/write_target.h"

#include "base/texts.h"
#include "base/translation.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <string_view>
#include <utility>
#include <vector>

namespace quelm {
namespace {

constexpr int openPath = O_PATH | O_CLOEXEC;

std::string folderOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

/// True for what others may have put there for us to fall over.
bool isStrangers(const struct stat& file, const struct stat& folder)
{
    const bool shared = (folder.st_mode & S_ISVTX) != 0 && (folder.st_mode & (S_IWGRP | S_IWOTH)) != 0;
    return shared && file.st_uid != geteuid() && file.st_uid != folder.st_uid;
}

/// Links of the proc file system lead to what a process has open, not to where their text says.
bool isInProc(int file)
{
    struct statfs system {};
    return fstatfs(file, &system) == 0 && system.f_type == PROC_SUPER_MAGIC;
}

class PathWalk {
public:
    explicit PathWalk(const std::string& path) : text_(path) { enter(path); }

    WriteTarget end()
    {
        while (!isDone_) {
            const std::string part = std::move(rest_.back());
            rest_.pop_back();
            step(part, rest_.empty());
        }
        target_.folderPath = folderOf(text_);
        if (target_.error == 0 && target_.problem.empty())
            target_.folder = std::move(here_);
        if (text_.ends_with('/'))
            target_.name.clear();
        return std::move(target_);
    }

private:
    /// Goes on with a path, at the root when it begins there.
    void enter(std::string_view path)
    {
        if (path.starts_with('/') || !here_.isOpen())
            go(FileHandle(open(path.starts_with('/') ? "/" : ".", openPath | O_DIRECTORY)));
        const auto inner = rest_.size();
        while (!path.empty()) {
            const auto end = path.find('/');
            if (end != 0)
                rest_.emplace(rest_.begin() + static_cast<std::ptrdiff_t>(inner), path.substr(0, end));
            path.remove_prefix(end == std::string_view::npos ? path.size() : end + 1);
        }
        if (rest_.empty())
            rest_.emplace_back("."); // the root itself
    }

    void step(const std::string& part, bool last)
    {
        if (part == "." || part == "..") {
            if (last)
                return finish(part, statusOf(FileHandle(openat(here_.get(), part.c_str(), openPath))));
            if (part == "..")
                go(FileHandle(openat(here_.get(), "..", openPath | O_DIRECTORY)));
            return;
        }
        const FileHandle found(openat(here_.get(), part.c_str(), openPath | O_NOFOLLOW));
        if (!found.isOpen() && errno == ENOENT && last)
            return finish(part, {});
        const auto status = statusOf(found);
        if (!status)
            return;
        if (S_ISLNK(status->st_mode))
            return follow(found, *status, part, last);
        if (last)
            return finish(part, status);
        // Opened anew as a folder: that mounts what is mounted on demand, and a link in its place is refused.
        go(FileHandle(openat(here_.get(), part.c_str(), openPath | O_DIRECTORY | O_NOFOLLOW)));
    }

    void follow(const FileHandle& link, const struct stat& status, const std::string& part, bool last)
    {
        constexpr int mostLinks = 40;
        if (++links_ > mostLinks)
            return fail(ELOOP);
        if (isStrangersHere(status))
            return refuse(localized("\"%s\" is a link that another user laid in a folder for everybody; name "
                                    "the file itself",
                                    oneLine(part)));
        if (isInProc(link.get())) {
            if (!last)
                return go(FileHandle(openat(here_.get(), part.c_str(), openPath | O_DIRECTORY)));
            struct stat open {};
            const bool isThere = fstatat(here_.get(), part.c_str(), &open, 0) == 0;
            if (isThere && !S_ISREG(open.st_mode) && !S_ISDIR(open.st_mode)) {
                target_.isOpenFile = true;
                return finish(part, open);
            }
            if (isThere && open.st_nlink == 0)
                return refuse(localized("that open file has no name any more; name a file"));
        }
        std::array<char, PATH_MAX> buffer{};
        const ssize_t length = readlinkat(link.get(), "", buffer.data(), buffer.size());
        if (length <= 0)
            return fail(length < 0 ? errno : ENOENT);
        const std::string text(buffer.data(), static_cast<std::size_t>(length));
        if (last)
            text_ = text.front() == '/' ? text : folderOf(text_) + "/" + text;
        enter(text);
    }

    void finish(const std::string& name, const std::optional<struct stat>& present)
    {
        isDone_ = true;
        target_.name = name;
        target_.present = present;
        if (present && !S_ISDIR(present->st_mode) && !target_.isOpenFile && isStrangersHere(*present))
            refuse(localized("another user made it in a folder for everybody; choose another name"));
    }

    bool isStrangersHere(const struct stat& file)
    {
        const auto folder = statusOf(here_);
        return folder && isStrangers(file, *folder);
    }

    std::optional<struct stat> statusOf(const FileHandle& file)
    {
        struct stat status {};
        if (file.isOpen() && fstat(file.get(), &status) == 0)
            return status;
        fail(errno);
        return std::nullopt;
    }

    void go(FileHandle folder)
    {
        if (!folder.isOpen())
            return fail(errno);
        here_ = std::move(folder);
    }

    void fail(int error)
    {
        isDone_ = true;
        target_.error = error;
    }

    void refuse(const std::string& problem)
    {
        isDone_ = true;
        target_.problem = problem;
    }

    std::string text_;              ///< the path, behind its last link when that is the file itself
    FileHandle here_;               ///< the folder that has been reached
    std::vector<std::string> rest_; ///< of the path, the next part last
    int links_ = 0;
    bool isDone_ = false;
    WriteTarget target_;
};

} // namespace

WriteTarget findWriteTarget(const std::string& path) { return PathWalk(path).end(); }

int openFlags(const WriteTarget& target)
{
    return O_CLOEXEC | O_NOCTTY | (target.isOpenFile ? 0 : O_NOFOLLOW);
}

bool isFoundFile(const FileHandle& opened, const WriteTarget& target)
{
    struct stat status {};
    return target.present && fstat(opened.get(), &status) == 0 && status.st_ino == target.present->st_ino &&
           status.st_dev == target.present->st_dev;
}

} // namespace quelm
