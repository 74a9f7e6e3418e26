#include <csignal>
#include <regex>

#include <gmock/gmock.h>

#include "common/environment_variable.h"
#include "common/temporary_folder.h"
#include "support/files.h"
#include "support/process.h"

namespace bw {
namespace {

using testing::HasSubstr;

// A copy of the child that dies, so that the folder of its crash files is the test's own.
class CrashFile : public testing::Test {
  protected:
    CrashFile() {
        std::filesystem::create_directory(folder_ / "the program");
        std::filesystem::copy_file(BANKWEAVER_CRASH_CHILD, program_);
    }

    // The exit status of a child that dies in this way.
    int Run(const std::string& how) const {
        Process process;
        EXPECT_TRUE(process.Start(program_, {how}, "/"));
        process.ReadOutput(std::chrono::seconds(60));
        return process.ExitStatus(std::chrono::seconds(60));
    }

    // The text of the one file in the folder, whose name has to be that of a crash file.
    static std::string TheFile(const std::filesystem::path& dumps) {
        const std::regex pattern(
            R"(the child_\d{4}-\d\d-\d\d \d\d_\d\d_\d\d\.(0|[1-9]\d{0,2})\.dmp)");
        std::string text;
        size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(dumps)) {
            EXPECT_TRUE(std::regex_match(entry.path().filename().string(), pattern)) << entry;
            const auto bytes = ReadFile(entry.path());
            if (bytes) text.assign(bytes->begin(), bytes->end());
            ++count;
        }
        EXPECT_EQ(count, 1u);
        return text;
    }

    TemporaryFolder folder_;
    std::filesystem::path program_ = folder_ / "the program/the child.bin";
    std::filesystem::path dumps_ = folder_ / "the program/Dump";
    EnvironmentVariable home_{"BANKWEAVER_HOME", (folder_ / "home").c_str()};
};

TEST_F(CrashFile, IsWrittenForEachWayToDie) {
    const struct {
        const char* how;
        int signal;
        const char* words;
    } ways[] = {{"access", SIGSEGV, "SIGSEGV, code 1, address 0x40"},
                {"stack", SIGSEGV, "SIGSEGV"},
                {"thread-stack", SIGSEGV, "SIGSEGV"},
                {"exception", SIGABRT, "Exception: words of the exception\n"},
                {"abort", SIGABRT, "SIGABRT"},
                {"bus", SIGBUS, "SIGBUS"},
                {"number", SIGFPE, "SIGFPE"},
                {"instruction", SIGILL, "SIGILL"}};
    for (const auto& way : ways) {
        SCOPED_TRACE(way.how);
        std::filesystem::remove_all(dumps_);
        EXPECT_EQ(Run(way.how), 128 + way.signal);
        const std::string text = TheFile(dumps_);
        EXPECT_THAT(text, HasSubstr(way.words));
        // The calls and the map name the program; an address can be looked up with the two.
        EXPECT_THAT(text, testing::ContainsRegex("\nCalls:\n.*the child.bin"));
        EXPECT_THAT(text, testing::ContainsRegex("\nMemory map:\n.*r-xp.*the child.bin"));
    }
    EXPECT_FALSE(std::filesystem::exists(folder_ / "home"));
}

TEST_F(CrashFile, GoesToTheUsersFolderWhereTheProgramsCannotBeWritten) {
    WriteFile(dumps_, std::string_view("a file, where the folder would be"));
    EXPECT_EQ(Run("access"), 128 + SIGSEGV);
    EXPECT_THAT(TheFile(folder_ / "home/config/Dump"), HasSubstr("SIGSEGV"));
    EXPECT_EQ(std::filesystem::file_size(dumps_), 33u);
}

}  // namespace
}  // namespace bw
