#include "support/process.h"

#include <gtest/gtest.h>

#include "common/temporary_folder.h"
#include "common/this_process.h"
#include "support/files.h"
#include "support/text.h"

namespace bw {
namespace {

using namespace std::chrono_literals;

// Long enough for a loaded machine; no test waits for it to pass.
constexpr auto kPatience = 60s;
const std::filesystem::path kChild = BANKWEAVER_PROCESS_CHILD;

using Outcome = std::pair<std::string, int>;

// What a program writes, and its exit status.
Outcome Finish(const std::filesystem::path& program, const std::vector<std::string>& arguments,
               const std::filesystem::path& folder = "/") {
    Process process;
    EXPECT_TRUE(process.Start(program, arguments, folder));
    const std::string output = process.ReadOutput(kPatience);
    return {output, process.ExitStatus(kPatience)};
}
Outcome Child(const std::vector<std::string>& deeds) {
    return Finish(kChild, deeds);
}

TEST(Process, OutputOfBothStreamsAndExitStatus) {
    EXPECT_EQ(Child({"out:one\n", "err:two\n", "out:three", "exit:37"}),
              Outcome("one\ntwo\nthree", 37));
    EXPECT_EQ(Child({"close", "wait:200", "exit:4"}).second, 4) << "closed before its end";
    EXPECT_EQ(Child({"words", "", "a b", "\"$HOME\"", "\\'*\n", "c\\\\\"d\\", "魂斗罗"}),
              Outcome("[words][][a b][\"$HOME\"][\\'*\n][c\\\\\"d\\][魂斗罗]", 0));
    EXPECT_EQ(Child({"input", "out:."}).first, "0.") << "nothing to read, and no wait";
}

TEST(Process, ProgramIsFoundFromHereAndRunsThere) {
    const TemporaryFolder folder;
    const auto start = std::filesystem::current_path();
    const std::filesystem::path tool = "tools/child" + kChild.extension().string();
    const auto text = [](const std::filesystem::path& path) { return ToUtf8(PathText(path)); };
    std::filesystem::create_directory(folder / "tools");
    std::filesystem::create_directory(folder / "魂");
    std::filesystem::copy_file(kChild, folder / tool);
    std::filesystem::current_path(folder.Path());
    EXPECT_EQ(Finish(tool, {"folder"}, folder / "魂").first, text(folder / "魂"));
    EXPECT_EQ(Finish("." / tool, {"folder"}, "").first, text(folder / "tools"))
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
    EXPECT_FALSE(process.Start(kChild, {}, "/missing"));
    EXPECT_EQ(process.ReadOutput(kPatience), "");
    EXPECT_EQ(process.ExitStatus(kPatience), -1);
}

TEST(Process, LargeOutputArrivesWholeUpToTheLimit) {
    EXPECT_EQ(Child({"fill:300000"}).first.size(), 300'000u) << "more than a pipe holds";
    Process process;
    ASSERT_TRUE(process.Start(kChild, {"fill:300000", "exit:5"}, "/"));
    EXPECT_EQ(process.ReadOutput(kPatience, 100'001).size(), 100'001u);
    EXPECT_EQ(process.ExitStatus(kPatience), 5) << "the rest was read, so the child could end";
    ASSERT_TRUE(process.Start(kChild, {"endless"}, "/"));
    EXPECT_EQ(process.ReadOutput(kPatience, 1000).size(), 1000u) << "of an endless output";
    EXPECT_EQ(process.ExitStatus(), Process::kStillRunning);
}

// A child that says its number and then nothing any more.
uint32_t StartHanging(Process& process) {
    EXPECT_TRUE(process.Start(kChild, {"id", "wait:1000000"}, "/"));
    std::string number;
    while (number.empty())
        number = process.ReadOutput(20ms);
    return static_cast<uint32_t>(std::stoul(number));
}

TEST(Process, HangingChildIsGivenUpKilledAndCollected) {
    uint32_t child = 0;
    {
        Process process;
        child = StartHanging(process);
        EXPECT_EQ(process.ReadOutput(20ms), "");
        EXPECT_EQ(process.ExitStatus(20ms), Process::kStillRunning);
        EXPECT_TRUE(ProcessRuns(child));
        process.Close();
        EXPECT_FALSE(ProcessRuns(child));
        EXPECT_EQ(process.ExitStatus(), -1) << "forgotten";
        child = StartHanging(process);
    }
    EXPECT_FALSE(ProcessRuns(child)) << "the destructor ends it too";
}

// A handle that stays open in the parent or a later child keeps a pipe from ever ending.
TEST(Process, NothingStaysOpen) {
    const auto round = [] {
        Process first, second, missing;
        ASSERT_TRUE(first.Start(kChild, {"out:first"}, "/"));
        ASSERT_TRUE(second.Start(kChild, {"wait:1000000"}, "/"));
        EXPECT_FALSE(missing.Start("/missing", {}, "/"));
        EXPECT_EQ(first.ReadOutput(kPatience), "first");
        EXPECT_TRUE(first.Start(kChild, {"out:again"}, "/")) << "used again";
        EXPECT_EQ(first.ReadOutput(kPatience), "again");
    };
    round();  // what the system opens once stays
    const auto before = test::CountOpenHandles();
    for (int i = 0; i < 3; ++i)
        round();
    EXPECT_EQ(test::CountOpenHandles(), before);
}

}  // namespace
}  // namespace bw
