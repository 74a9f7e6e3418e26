// The program as a shell runs it, for what only POSIX systems have: limits, other users, locales.
#pragma once

#include <cstdlib>

#include <sys/wait.h>

#include "cli/command_fixture.h"

namespace bw {

class ShellCommands : public Commands {
  protected:
    // So that the files of its streams are there.
    ShellCommands() { RunAfter("", "--version"); }
    // Runs the program in the test's folder. `before` is shell text in front of it.
    RunResult RunAfter(const std::string& before, const std::string& arguments) const {
        const std::string command =
            "cd '" + folder_.Path().string() + "' && export LC_ALL=C BANKWEAVER_HOME='" +
            (folder_ / "home").string() + "' && " + before + " '" + BANKWEAVER_CLI + "' " +
            arguments + " > stdout.txt 2> stderr.txt < /dev/null";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadText(folder_ / "stdout.txt"),
                ReadText(folder_ / "stderr.txt")};
    }
    void ExpectRefusedAfter(const std::string& before, const std::string& arguments,
                            const std::string& words) {
        ExpectRefusal(arguments, words, [&] { return RunAfter(before, arguments); });
    }
};

}  // namespace bw
