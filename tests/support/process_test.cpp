#include "support/process.h"

#include <cerrno>
#include <csignal>

#include <gtest/gtest.h>
#include <unistd.h>

#include "common/temporary_folder.h"
#include "support/files.h"

namespace bw {
namespace {

using namespace std::chrono_literals;

// Long enough for a loaded machine; no test waits for it to pass.
constexpr auto kPatience = 60s;

using Outcome = std::pair<std::string, int>;

// What a program writes, and its exit status.
Outcome Finish(const std::filesystem::path& program, const std::vector<std::string>& arguments,
               const std::filesystem::path& folder = "/") {
    Process process;
    EXPECT_TRUE(process.Start(program, arguments, folder));
    const std::string output = process.ReadOutput(kPatience);
    return {output, process.ExitStatus(kPatience)};
}
Outcome Shell(const std::string& script) {
    return Finish("/bin/sh", {"-c", script});
}

bool Exists(pid_t process) {
    return kill(process, 0) == 0 || errno != ESRCH;
}

TEST(Process, OutputOfBothStreamsAndExitStatus) {
    EXPECT_EQ(Shell("echo one; echo two >&2; printf three; exit 37"),
              Outcome("one\ntwo\nthree", 37));
    EXPECT_EQ(Shell("exec >&- 2>&-; sleep 0.2; exit 4").second, 4) << "closed before its end";
    EXPECT_EQ(Shell("kill -KILL $$").second, -1);
    EXPECT_EQ(Finish("/usr/bin/printf", {"[%s]", "", "a b", "\"$HOME\"", "\\'*\n"}),
              Outcome("[][a b][\"$HOME\"][\\'*\n]", 0));
}

TEST(Process, ProgramIsFoundFromHereAndRunsThere) {
    const TemporaryFolder folder;
    const auto start = std::filesystem::current_path();
    std::filesystem::create_directory(folder / "tools");
    std::filesystem::copy_file("/bin/sh", folder / "tools/shell");
    std::filesystem::current_path(folder.Path());
    EXPECT_EQ(Finish("tools/shell", {"-c", "pwd"}, "/usr").first, "/usr\n");
    EXPECT_EQ(Finish("./tools/shell", {"-c", "pwd"}, "").first, (folder / "tools").string() + "\n")
        << "no folder: the program's";
    std::filesystem::current_path(start);
}

TEST(Process, WhatCannotStartIsSaidAtOnce) {
    const TemporaryFolder folder;
    WriteFile(folder / "text", std::string_view("no program"));
    Process process;
    EXPECT_FALSE(process.Start("/missing/nesasm", {}, "/"));
    EXPECT_FALSE(process.Start("no-such-program-on-the-path", {}, "/"));
    EXPECT_FALSE(process.Start(folder / "text", {}, "/"));
    EXPECT_FALSE(process.Start("/bin/sh", {}, "/missing"));
    EXPECT_EQ(process.ReadOutput(kPatience), "");
    EXPECT_EQ(process.ExitStatus(kPatience), -1);
}

TEST(Process, LargeOutputArrivesWholeUpToTheLimit) {
    const std::string script =
        "i=0; while [ $i -lt 3000 ]; do printf '%0100d' $i; i=$((i+1)); done";
    EXPECT_EQ(Shell(script).first.size(), 300'000u) << "more than a pipe holds";
    Process process;
    ASSERT_TRUE(process.Start("/bin/sh", {"-c", script + "; exit 5"}, "/"));
    EXPECT_EQ(process.ReadOutput(kPatience, 100'001).size(), 100'001u);
    EXPECT_EQ(process.ExitStatus(kPatience), 5) << "the rest was read, so the child could end";
    ASSERT_TRUE(process.Start("yes", {}, "/"));
    EXPECT_EQ(process.ReadOutput(kPatience, 1000).size(), 1000u) << "of an endless output";
    EXPECT_EQ(process.ExitStatus(), Process::kStillRunning);
}

// A child that says its number and then nothing any more.
pid_t StartHanging(Process& process) {
    EXPECT_TRUE(process.Start("/bin/sh", {"-c", "echo $$; exec sleep 1000"}, "/"));
    std::string number;
    while (number.empty())
        number = process.ReadOutput(20ms);
    return std::stoi(number);
}

TEST(Process, HangingChildIsGivenUpKilledAndCollected) {
    pid_t child = 0;
    {
        Process process;
        child = StartHanging(process);
        EXPECT_EQ(process.ReadOutput(20ms), "");
        EXPECT_EQ(process.ExitStatus(20ms), Process::kStillRunning);
        EXPECT_TRUE(Exists(child));
        process.Close();
        EXPECT_FALSE(Exists(child));
        EXPECT_EQ(process.ExitStatus(), -1) << "forgotten";
        child = StartHanging(process);
    }
    EXPECT_FALSE(Exists(child)) << "the destructor ends it too";
}

TEST(Process, ChildStartsWithFreshSignalsAndNoInput) {
    const auto old = std::signal(SIGPIPE, SIG_IGN);
    EXPECT_EQ(Shell("kill -PIPE $$; echo alive").first, "");
    std::signal(SIGPIPE, old);
    EXPECT_EQ(Shell("cat; echo end").first, "end\n");
}

// A handle that stays open in the parent or a later child keeps a pipe from ever ending.
TEST(Process, NothingStaysOpen) {
    const auto openDescriptors = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    };
    const auto before = openDescriptors();
    for (int i = 0; i < 3; ++i) {
        Process first, second, missing;
        ASSERT_TRUE(first.Start("/bin/sh", {"-c", "echo first"}, "/"));
        ASSERT_TRUE(second.Start("/bin/sleep", {"1000"}, "/"));
        EXPECT_FALSE(missing.Start("/missing", {}, "/"));
        EXPECT_EQ(first.ReadOutput(kPatience), "first\n");
        EXPECT_TRUE(first.Start("/bin/sh", {"-c", "ls /proc/self/fd"}, "/")) << "used again";
        EXPECT_EQ(first.ReadOutput(kPatience), "0\n1\n2\n3\n") << "3 is the listed folder";
    }
    EXPECT_EQ(openDescriptors(), before);
}

}  // namespace
}  // namespace bw
