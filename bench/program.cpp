// Starts programs and reads from the system what they took.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/program.h"

#include "bench/comparison.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>

namespace bench {

namespace {

double seconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

} // namespace

ProgramTimes timesOf(const std::vector<std::string>& arguments, const std::string& outputFile)
{
    std::vector<std::string> copies = arguments;
    std::vector<char*> words;
    words.reserve(copies.size() + 1);
    for (auto& word : copies)
        words.push_back(word.data());
    words.push_back(nullptr);
    posix_spawn_file_actions_t streams;
    posix_spawn_file_actions_init(&streams);
    posix_spawn_file_actions_addopen(&streams, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&streams, STDOUT_FILENO, outputFile.c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);
    const auto start = std::chrono::steady_clock::now();
    pid_t program = 0;
    const int error = posix_spawn(&program, words.front(), &streams, nullptr, words.data(), environ);
    posix_spawn_file_actions_destroy(&streams);
    require(error == 0, "a program could not be started");
    int status = 0;
    rusage used{};
    require(wait4(program, &status, 0, &used) == program, "a program could not be waited for");
    const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
    require(WIFEXITED(status) && WEXITSTATUS(status) == 0, "a program failed");
    return {seconds(used.ru_utime) + seconds(used.ru_stime), wall.count()};
}

} // namespace bench
