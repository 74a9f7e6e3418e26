#include <cstring>

#include <gmock/gmock.h>

#include "common/environment_variable.h"
#include "common/temporary_folder.h"
#include "support/file_queries.h"
#include "support/files.h"
#include "support/process.h"
#include "support/windows_api.h"
// It needs what windows.h declares.
#include <dbghelp.h>

namespace bw {
namespace {

class CrashFile : public testing::Test {
  protected:
    CrashFile() {
        EXPECT_TRUE(MakeFolders(program_.parent_path()));
        EXPECT_TRUE(CopyFile(BANKWEAVER_CRASH_CHILD, program_));
    }
    uint32_t Run(const std::string& how) const {
        Process process;
        EXPECT_TRUE(process.Start(program_, {how}, folder_.Path()));
        process.ReadOutput(std::chrono::seconds(60));
        return static_cast<uint32_t>(process.ExitStatus(std::chrono::seconds(60)));
    }

    // A part of the one dump in the folder.
    static std::vector<uint8_t> Part(const std::filesystem::path& dumps, ULONG32 kind) {
        const auto entries = ListFolder(dumps).ValueOr({});
        EXPECT_EQ(entries.size(), 1u);
        if (entries.empty()) return {};
        EXPECT_TRUE(entries[0].path.filename().native().starts_with(L"the \u9B42_20"));
        std::vector<uint8_t> dump = ReadFile(entries[0].path).ValueOr({});
        MINIDUMP_DIRECTORY* directory = nullptr;
        void* start = nullptr;
        ULONG size = 0;
        if (!MiniDumpReadDumpStream(dump.data(), kind, &directory, &start, &size)) return {};
        const auto* bytes = static_cast<const uint8_t*>(start);
        return {bytes, bytes + size};
    }
    static uint32_t Code(const std::filesystem::path& dumps) {
        MINIDUMP_EXCEPTION_STREAM stream{};
        const std::vector<uint8_t> part = Part(dumps, ExceptionStream);
        std::memcpy(&stream, part.data(), std::min(part.size(), sizeof stream));
        return stream.ExceptionRecord.ExceptionCode;
    }

    TemporaryFolder folder_;
    std::filesystem::path program_ = folder_ / L"the program" / L"the \u9B42.exe";
    std::filesystem::path dumps_ = folder_ / L"the program" / L"Dump";
    EnvironmentVariable home_{"BANKWEAVER_HOME", folder_ / "home"};
};

TEST_F(CrashFile, IsWrittenForEachWayToDie) {
    const std::pair<const char*, uint32_t> ways[] = {
        {"access", EXCEPTION_ACCESS_VIOLATION},
        {"stack", EXCEPTION_STACK_OVERFLOW},
        {"thread-stack", EXCEPTION_STACK_OVERFLOW},
        {"exception", 0xE0425745},
        {"terminate", 0xE0425745},
        {"abort", 0xE0425746},
        {"number", EXCEPTION_INT_DIVIDE_BY_ZERO},
        {"instruction", EXCEPTION_ILLEGAL_INSTRUCTION}};
    for (const auto& [how, code] : ways) {
        SCOPED_TRACE(how);
        RemoveFolder(dumps_);
        EXPECT_EQ(Run(how), code);
        EXPECT_EQ(Code(dumps_), code);
        EXPECT_FALSE(Part(dumps_, ModuleListStream).empty());
        if (std::string_view(how) != "exception") continue;
        const std::vector<uint8_t> words = Part(dumps_, CommentStreamA);
        EXPECT_EQ(std::string(words.begin(), words.end()),
                  std::string("words of the exception") + '\0');
    }
    EXPECT_FALSE(Exists(folder_ / "home"));
}

TEST_F(CrashFile, GoesToTheUsersFolderWhereTheProgramsCannotBeWritten) {
    WriteFile(dumps_, std::string_view("a file, where the folder would be"));
    Run("access");
    EXPECT_EQ(Code(folder_ / "home/config/Dump"), EXCEPTION_ACCESS_VIOLATION);
    EXPECT_EQ(FileSize(dumps_).ValueOr(0), 33u);
}

}  // namespace
}  // namespace bw
