// What POSIX alone has: signals, and descriptors that a child inherits.
#include <csignal>

#include <gtest/gtest.h>

#include "support/process.h"

namespace bw {
namespace {

using Outcome = std::pair<std::string, int>;

Outcome Shell(const std::string& script) {
    Process process;
    EXPECT_TRUE(process.Start("/bin/sh", {"-c", script}, "/"));
    const std::string output = process.ReadOutput(std::chrono::seconds(60));
    return {output, process.ExitStatus(std::chrono::seconds(60))};
}

TEST(ProcessOnPosix, ChildStartsWithFreshSignalsAndNothingOpen) {
    EXPECT_EQ(Shell("kill -KILL $$").second, -1);
    const auto old = std::signal(SIGPIPE, SIG_IGN);
    EXPECT_EQ(Shell("kill -PIPE $$; echo alive").first, "");
    std::signal(SIGPIPE, old);
    EXPECT_EQ(Shell("ls /proc/self/fd").first, "0\n1\n2\n3\n") << "3 is the listed folder";
}

}  // namespace
}  // namespace bw
