// What Windows alone does to files: whoever has one open keeps others off, the protection against
// writing is the file's, and short paths are the rule.
#include <thread>

#include <gtest/gtest.h>

#include "common/temporary_folder.h"
#include "support/file_queries.h"
#include "support/files.h"
#include "support/windows_path.h"

namespace bw {
namespace {

using namespace std::string_view_literals;

// As a guard against viruses holds a file; lets it go after the time.
std::jthread HoldFor(const std::filesystem::path& file, std::chrono::milliseconds time) {
    const HANDLE held = CreateFileW(CallPath(file.native()).c_str(), GENERIC_READ, 0, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_NE(held, INVALID_HANDLE_VALUE);
    return std::jthread([held, time] {
        std::this_thread::sleep_for(time);
        CloseHandle(held);
    });
}

struct FilesOnWindows : testing::Test {
    TemporaryFolder folder_;
};

TEST_F(FilesOnWindows, FileThatIsHeldForAMomentIsWaitedFor) {
    const std::filesystem::path file = folder_ / "cart.nes";
    WriteFile(file, "old"sv);
    {
        const auto held = HoldFor(file, std::chrono::seconds(1));
        EXPECT_TRUE(WriteFile(file, "new"sv));
    }
    {
        auto replacement = ReplacementFile::Begin(file);
        ASSERT_TRUE(replacement);
        const auto held = HoldFor(file, std::chrono::seconds(1));
        EXPECT_TRUE(replacement->Commit()) << "held since";
    }
    EXPECT_EQ(folder_.CountFiles(), 1u);
    {
        const auto held = HoldFor(file, std::chrono::seconds(1));
        EXPECT_TRUE(DeleteFile(file));
    }
    MakeFolders(folder_ / "work/menu");
    WriteFile(folder_ / "work/menu/file", "x"sv);
    {
        const auto held = HoldFor(folder_ / "work/menu/file", std::chrono::seconds(1));
        EXPECT_TRUE(RemoveFolder(folder_ / "work"));
    }
    EXPECT_EQ(folder_.CountFiles(), 0u);
}

TEST_F(FilesOnWindows, FileThatStaysHeldIsTold) {
    const std::filesystem::path file = folder_ / "file";
    WriteFile(file, "old"sv);
    const auto held = HoldFor(file, std::chrono::seconds(10));
    const FileResult<> refused = WriteFile(file, "newer"sv);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.Problem().file, file);
    EXPECT_FALSE(SystemMessage(refused.Problem().system).empty());
    EXPECT_EQ(folder_.CountFiles(), 1u);
}

TEST_F(FilesOnWindows, ProtectedFileCanBeRemoved) {
    const std::filesystem::path file = folder_ / "file";
    WriteFile(file, "old"sv);
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(RemoveFolder(folder_ / "file"));
    EXPECT_EQ(folder_.CountFiles(), 0u);
}

TEST_F(FilesOnWindows, LongPathsAreAsGoodAsShortOnes) {
    std::filesystem::path deep = folder_.Path();
    while (deep.native().size() < 400)
        deep /= L"\u9B42\u6597\u7F85 with a long name";
    ASSERT_TRUE(MakeFolders(deep));
    EXPECT_TRUE(WriteFile(deep / "a.nes", "old"sv) && WriteFile(deep / "a.nes", "new!"sv));
    EXPECT_EQ(ReadFile(deep / "a.nes").ValueOr({}).size(), 4u);
    EXPECT_EQ(FileSize(deep / "a.nes").ValueOr(0), 4u);
    EXPECT_TRUE(CopyFile(deep / "a.nes", deep / "b.nes") &&
                RenameFile(deep / "b.nes", deep / "c.nes"));
    EXPECT_TRUE(IsFile(deep / "c.nes") && IsFolder(deep) && !Exists(deep / "b.nes"));
    EXPECT_EQ(ListFolder(deep).ValueOr({}).size(), 2u);
    EXPECT_EQ(RealPath(deep / "c.nes"), RealPath(deep / "." / "c.nes"));
    EXPECT_TRUE(IsSameFile(deep / "c.nes", deep / "C.NES"));
    EXPECT_TRUE(FileLock::TryTake(deep / "c.nes") && DeleteFile(deep / "c.nes"));
    EXPECT_TRUE(RemoveFolder(folder_ / deep.lexically_relative(folder_.Path()).begin()->native()));
    EXPECT_EQ(folder_.CountFiles(), 0u);
}

}  // namespace
}  // namespace bw
