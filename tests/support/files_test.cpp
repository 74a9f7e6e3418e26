#include "support/files.h"

#include <functional>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "common/file_size_limit.h"
#include "common/game_image.h"
#include "common/temporary_folder.h"

namespace bw {
namespace {

namespace fs = std::filesystem;
using namespace std::string_view_literals;
using test::ReadText;

struct Files : testing::Test {
    TemporaryFolder folder_;
};

fs::perms Mode(const fs::path& path) {
    return fs::status(path).permissions();
}

TEST_F(Files, NewFileHasTheUsersUsualPermissionsAndTheOldOnesStay) {
    // The longest name leaves no room for a longer one beside it.
    const fs::path file = folder_ / std::string(255, 'n');
    const mode_t old = umask(027);
    EXPECT_TRUE(WriteFile(file, "old, and longer"sv));
    umask(old);
    EXPECT_EQ(ReadText(file), "old, and longer");
    EXPECT_EQ(Mode(file), fs::perms{0640});
    fs::permissions(file, fs::perms{0604});
    EXPECT_TRUE(WriteFile(file, "new"sv));
    EXPECT_EQ(ReadText(file), "new");
    EXPECT_EQ(Mode(file), fs::perms{0604});
    EXPECT_EQ(folder_.CountFiles(), 1u);
}

TEST_F(Files, LinkStaysAndItsFileIsReplaced) {
    fs::create_directory(folder_ / "real");
    fs::create_symlink("real/file", folder_ / "relative");
    fs::create_symlink(folder_ / "relative", folder_ / "chain");
    EXPECT_TRUE(WriteFile(folder_ / "chain", "made"sv)) << "leads nowhere yet";
    EXPECT_TRUE(WriteFile(folder_ / "chain", "replaced"sv));
    EXPECT_EQ(ReadText(folder_ / "real/file"), "replaced");
    EXPECT_TRUE(fs::is_symlink(folder_ / "relative") && fs::is_symlink(folder_ / "chain"));

    fs::create_symlink("b", folder_ / "a");
    fs::create_symlink("a", folder_ / "b");
    EXPECT_FALSE(WriteFile(folder_ / "a", "round and round"sv));
}

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

// Protection against writing doesn't bind root, so the question is asked by somebody else.
bool AsOrdinaryUser(const std::function<bool()>& question) {
    constexpr uid_t kNobody = 65534;
    const pid_t child = fork();
    if (child == 0) {
        if (getuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) _exit(2);
        _exit(question() ? 1 : 0);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) < 2) << status;
    return WEXITSTATUS(status) == 1;
}

TEST_F(Files, ProtectedFileOrFolderIsRefused) {
    const fs::path file = folder_ / "file";
    WriteFile(file, "old"sv);
    const auto write = [&] { return bool(WriteFile(file, "new"sv)); };
    fs::permissions(folder_.Path(), fs::perms{0777});
    fs::permissions(file, fs::perms{0444});
    EXPECT_FALSE(AsOrdinaryUser(write)) << "a file that may not be written";
    fs::permissions(file, fs::perms{0666});
    fs::permissions(folder_.Path(), fs::perms{0555});
    EXPECT_FALSE(AsOrdinaryUser(write)) << "a folder that may not be written";
    EXPECT_EQ(ReadText(file), "old");
    fs::permissions(folder_.Path(), fs::perms{0777});
    EXPECT_TRUE(AsOrdinaryUser(write));
    EXPECT_EQ(ReadText(file), "new");
    EXPECT_EQ(folder_.CountFiles(), 1u);
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
    mkfifo((folder_ / "pipe").c_str(), 0600);
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
                 {write("pipe"), kNotRegular, "pipe"},
                 {read("file"), kTooLarge, "file"},
                 {write(longName), kNameTooLong, longName},
                 {MakeFolders(folder_ / "file/a/b").Problem(), kNotFolder, "file"},
                 {DeleteFile(folder_ / "file/a").Problem(), kNotFolder, "file"}};
    for (const auto& test : cases) {
        EXPECT_EQ(test.problem.kind, test.kind) << test.problem.file;
        EXPECT_EQ(test.problem.file, folder_ / test.file);
    }
    EXPECT_TRUE(ReadFile(folder_ / "file", 5));
    // A named pipe in a folder of games would stop the program for good.
    const auto pipe = File::OpenForReading(folder_ / "pipe");
    std::vector<uint8_t> bytes(16);
    EXPECT_FALSE(pipe && pipe->ReadAt(0, bytes).ValueOr(0) > 0);
    EXPECT_EQ(read("file").size, 5u);
    EXPECT_EQ(read("file").limit, 4u);
    EXPECT_FALSE(WriteFile("", "x"sv));
    // It stands for devices too: run by root, a fault would replace one of the system's.
    EXPECT_TRUE(fs::is_fifo(folder_ / "pipe"));
}

TEST_F(Files, ScratchFileReplacesALongerOneAndLeavesNoHalves) {
    EXPECT_TRUE(WriteScratchFile(folder_ / "file", "a longer text"sv));
    EXPECT_TRUE(WriteScratchFile(folder_ / "file", "short"sv));
    EXPECT_EQ(ReadText(folder_ / "file"), "short");
    EXPECT_FALSE(WriteScratchFile(folder_ / "missing/file", "x"sv));
    const FileSizeLimit fullDisk(4);
    EXPECT_EQ(WriteScratchFile(folder_ / "file", "too long"sv).Problem().kind,
              FileProblem::Kind::kTooLarge);
    EXPECT_FALSE(fs::exists(folder_ / "file"));
}

TEST_F(Files, FoldersAreMadeLevelByLevel) {
    EXPECT_TRUE(MakeFolders(folder_ / "a/b/c"));
    EXPECT_TRUE(MakeFolders(folder_ / "a/b/c/"));
    EXPECT_TRUE(fs::is_directory(folder_ / "a/b/c"));
    WriteFile(folder_ / "file", "x"sv);
    EXPECT_FALSE(MakeFolders(folder_ / "file"));
}

TEST_F(Files, FoldersRemovalStopsAtLinks) {
    MakeFolders(folder_ / "work/menu/build");
    MakeFolders(folder_ / "games");
    WriteFile(folder_ / "games/game.nes", "x"sv);
    WriteFile(folder_ / "work/menu/build/file", "x"sv);
    fs::create_directory_symlink(folder_ / "games", folder_ / "work/menu/games");
    EXPECT_TRUE(RemoveFolder(folder_ / "work"));
    EXPECT_FALSE(fs::exists(folder_ / "work"));
    EXPECT_TRUE(fs::exists(folder_ / "games/game.nes"));
    EXPECT_TRUE(RemoveFolder(folder_ / "work")) << "gone already";
    EXPECT_FALSE(RemoveFolder(""));
}

TEST_F(Files, DeletingAMissingFileIsASuccess) {
    WriteFile(folder_ / "file", "x"sv);
    EXPECT_TRUE(DeleteFile(folder_ / "file"));
    EXPECT_TRUE(DeleteFile(folder_ / "file"));
    EXPECT_FALSE(DeleteFile(""));
    EXPECT_FALSE(DeleteFile(folder_.Path())) << "an empty folder is no file";
    fs::create_symlink("nowhere", folder_ / "link");
    EXPECT_TRUE(DeleteFile(folder_ / "link"));
    EXPECT_EQ(folder_.CountFiles(), 0u);
}

}  // namespace
}  // namespace bw
