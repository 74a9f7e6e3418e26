// Runs another program and says what it took.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "measure.h"

namespace bench {

struct ChildResult {
    double milliseconds = 0;
    long peakKilobytes = 0;  // resident memory, of the program or of one that it ran
};

// What the program prints goes to `output`. -1 if there is no such program.
inline pid_t StartChild(std::vector<std::string> words,
                        const std::filesystem::path& output = "/dev/null") {
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    pid_t child = -1;
    if (posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ) != 0) {
        child = -1;
    }
    posix_spawn_file_actions_destroy(&actions);
    return child;
}

// Ends this program if that one fails.
inline ChildResult RunChild(const std::vector<std::string>& words,
                            const std::filesystem::path& output = "/dev/null") {
    int status = -1;
    rusage usage{};
    const double milliseconds = Time([&] {
        const pid_t child = StartChild(words, output);
        if (child != -1) wait4(child, &status, 0, &usage);
    });
    if (status != 0) {
        std::fprintf(stderr, "%s failed (%d); its words are in %s\n", words[0].c_str(), status,
                     output.c_str());
        std::exit(1);
    }
    return {milliseconds, usage.ru_maxrss};
}

}  // namespace bench
