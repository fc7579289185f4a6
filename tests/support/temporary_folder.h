// A folder of a test's own, removed when the test ends, and small helpers for the files in it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_TEMPORARY_FOLDER_H
#define TESTS_SUPPORT_TEMPORARY_FOLDER_H

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::string pattern = std::filesystem::temp_directory_path() / "quelm-test-XXXXXX";
        if (mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("no temporary folder");
        folder_ = pattern;
        // Tests that give up root's rights still need to get in.
        std::filesystem::permissions(folder_, std::filesystem::perms::all);
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_, ignored))
            if (entry.symlink_status(ignored).type() == std::filesystem::file_type::directory)
                std::filesystem::permissions(entry, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(folder_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string operator/(const std::string& name) const { return folder_ / name; }
    const std::filesystem::path& path() const { return folder_; }

    /// The names in the folder, sorted.
    std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(folder_))
            found.push_back(entry.path().filename());
        std::sort(found.begin(), found.end());
        return found;
    }

private:
    std::filesystem::path folder_;
};

/// The bytes of a file; none of a folder.
inline std::string contentOf(const std::string& path)
{
    if (std::filesystem::is_directory(path))
        return "";
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline std::string writeFile(const std::string& path, const std::string& content)
{
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

/// What `body` answers in a process of its own, which so may change limits, rights and signals:
/// its exit status, or 128 + number when a signal ended it.
template <typename Body>
int inProcess(Body body)
{
    const pid_t child = fork();
    if (child == 0) {
        int status = 99;
        try {
            status = body();
        } catch (...) {
        }
        _exit(status);
    }
    int word = 0;
    waitpid(child, &word, 0);
    return WIFEXITED(word) ? WEXITSTATUS(word) : 128 + WTERMSIG(word);
}

inline constexpr unsigned ordinaryUser = 65534;

/// Root gives away what the ordinary user is to own; anybody else owns it already.
inline void giveToOrdinaryUser(const std::string& path)
{
    if (geteuid() == 0 && chown(path.c_str(), ordinaryUser, ordinaryUser) != 0)
        throw std::runtime_error("cannot give " + path + " away");
}

/// Root may write anything; as root this gives that up. To be called in a process of its own.
inline void becomeOrdinaryUser()
{
    if (geteuid() == 0 && (setgid(ordinaryUser) != 0 || setuid(ordinaryUser) != 0))
        throw std::runtime_error("cannot give up root's rights");
}

#endif
