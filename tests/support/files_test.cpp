#include "support/files.h"

#include <string>

#include <gtest/gtest.h>

#include "common/file_size_limit.h"
#include "common/game_image.h"
#include "common/special_files.h"
#include "common/temporary_folder.h"

namespace bw {
namespace {

namespace fs = std::filesystem;
using namespace std::string_view_literals;
using test::ReadText;

struct Files : testing::Test {
    TemporaryFolder folder_;
};

TEST_F(Files, FullDiskLeavesTheOldFileAndNothingElse) {
    WriteFile(folder_ / "cart.nes", "old"sv);
    {
        const FileSizeLimit limit(4096);
        EXPECT_FALSE(WriteFile(folder_ / "cart.nes", std::string(4097, 'x')));
        EXPECT_TRUE(WriteFile(folder_ / "other", std::string(4096, 'x')));
    }
    EXPECT_EQ(ReadText(folder_ / "cart.nes"), "old");
    EXPECT_EQ(folder_.CountFiles(), 2u);
}

TEST_F(Files, WithoutCommitNothingHappened) {
    {
        auto first = ReplacementFile::Begin(folder_ / "file");
        EXPECT_TRUE(first->Contents().WriteAt(0, std::vector<uint8_t>{1, 2, 3}));
        const ReplacementFile moved = std::move(*first);
        EXPECT_EQ(folder_.CountFiles(), 1u);
    }
    EXPECT_EQ(folder_.CountFiles(), 0u);
    auto file = ReplacementFile::Begin(folder_ / "file");
    EXPECT_TRUE(file->Commit());
    EXPECT_FALSE(file->Commit());
}

TEST_F(Files, ReadsAndWritesAtOffsets) {
    auto file = File::Create(folder_ / "file");
    EXPECT_TRUE(file->WriteAt(4, std::vector<uint8_t>{4, 5, 6}));
    EXPECT_TRUE(file->WriteAt(0, std::vector<uint8_t>{0, 1}));
    std::vector<uint8_t> bytes(4, 0xEE);
    EXPECT_EQ(*file->ReadAt(1, bytes), 4u);
    EXPECT_EQ(bytes, (std::vector<uint8_t>{1, 0, 0, 4}));
    EXPECT_EQ(*file->ReadAt(5, bytes), 2u) << "the end of the file";
    EXPECT_TRUE(file->SetEnd(2));
    EXPECT_EQ(*file->Size(), 2u);
    EXPECT_TRUE(file->Close());
    EXPECT_FALSE(file->Close() || file->WriteAt(0, bytes) || file->Size() ||
                 file->ReadAt(0, bytes));
}

TEST_F(Files, NamesTheFileAndTheKind) {
    using enum FileProblem::Kind;
    WriteFile(folder_ / "file", "12345"sv);
    const std::vector<fs::path> special = test::SpecialFiles(folder_.Path());
    const auto read = [&](const fs::path& name) { return ReadFile(folder_ / name, 4).Problem(); };
    const auto write = [&](const fs::path& name) {
        return WriteFile(folder_ / name, "x"sv).Problem();
    };
    const std::string longName(300, 'n');
    const struct {
        FileProblem problem;
        FileProblem::Kind kind;
        std::string file;
    } cases[] = {{read("no"), kNotFound, "no"},
                 {write("no/x"), kNotFound, "no/x"},
                 {read("file/x"), kNotFolder, "file"},
                 {write("file/x/y"), kNotFolder, "file"},
                 {read(""), kIsFolder, ""},
                 {write(""), kIsFolder, ""},
                 {read("file"), kTooLarge, "file"},
                 {write(longName), kNameTooLong, longName},
                 {MakeFolders(folder_ / "file/a/b").Problem(), kNotFolder, "file"},
                 {DeleteFile(folder_ / "file/a").Problem(), kNotFolder, "file"}};
    for (const auto& test : cases) {
        EXPECT_EQ(test.problem.kind, test.kind) << test.problem.file;
        EXPECT_EQ(test.problem.file, folder_ / test.file);
    }
    EXPECT_TRUE(ReadFile(folder_ / "file", 5));
    for (const fs::path& path : special) {
        EXPECT_EQ(ReadFile(path).Problem().kind, kNotRegular) << path;
        // Run by root, a fault would replace one of the system's.
        if (path.is_absolute() && !path.native().starts_with(folder_.Path().native())) continue;
        EXPECT_EQ(WriteFile(path, "x"sv).Problem().kind, kNotRegular) << path;
    }
    EXPECT_EQ(read("file").size, 5u);
    EXPECT_EQ(read("file").limit, 4u);
    EXPECT_FALSE(WriteFile("", "x"sv));
}

TEST_F(Files, ScratchFileReplacesALongerOneAndLeavesNoHalves) {
    EXPECT_TRUE(WriteScratchFile(folder_ / "file", "a longer text"sv));
    EXPECT_TRUE(WriteScratchFile(folder_ / "file", "short"sv));
    EXPECT_EQ(ReadText(folder_ / "file"), "short");
    EXPECT_FALSE(WriteScratchFile(folder_ / "missing/file", "x"sv));
    const FileSizeLimit fullDisk(4);
    EXPECT_FALSE(WriteScratchFile(folder_ / "file", "too long"sv));
    EXPECT_FALSE(fs::exists(folder_ / "file"));
}

TEST_F(Files, FoldersAreMadeLevelByLevel) {
    EXPECT_TRUE(MakeFolders(folder_ / "a/b/c"));
    EXPECT_TRUE(MakeFolders(folder_ / "a/b/c/"));
    EXPECT_TRUE(fs::is_directory(folder_ / "a/b/c"));
    WriteFile(folder_ / "file", "x"sv);
    EXPECT_FALSE(MakeFolders(folder_ / "file"));
    EXPECT_TRUE(RemoveFolder(folder_ / "a"));
    EXPECT_EQ(folder_.CountFiles(), 1u);
}

TEST_F(Files, DeletingAMissingFileIsASuccess) {
    WriteFile(folder_ / "file", "x"sv);
    EXPECT_TRUE(DeleteFile(folder_ / "file"));
    EXPECT_TRUE(DeleteFile(folder_ / "file"));
    EXPECT_FALSE(DeleteFile(""));
    EXPECT_FALSE(DeleteFile(folder_.Path())) << "an empty folder is no file";
    EXPECT_EQ(folder_.CountFiles(), 0u);
}

}  // namespace
}  // namespace bw
