#include "support/files.h"

#include <functional>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "common/file_size_limit.h"
#include "common/temporary_folder.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

std::optional<std::string> Text(const fs::path& path) {
    const auto bytes = ReadFile(path);
    return bytes ? std::optional<std::string>({bytes->begin(), bytes->end()}) : std::nullopt;
}

fs::perms Mode(const fs::path& path) {
    return fs::status(path).permissions();
}

TEST(ReplaceFile, NewFileHasTheUsersUsualPermissions) {
    const TemporaryFolder folder;
    const mode_t old = umask(027);
    EXPECT_TRUE(WriteFile(folder / "new", std::string_view("text")));
    umask(old);
    EXPECT_EQ(Text(folder / "new"), "text");
    EXPECT_EQ(Mode(folder / "new"), fs::perms{0640});
}

TEST(ReplaceFile, OldFilesPermissionsStay) {
    const TemporaryFolder folder;
    WriteFile(folder / "secret", std::string_view("old, and longer"));
    fs::permissions(folder / "secret", fs::perms{0604});
    EXPECT_TRUE(WriteFile(folder / "secret", std::string_view("new")));
    EXPECT_EQ(Text(folder / "secret"), "new");
    EXPECT_EQ(Mode(folder / "secret"), fs::perms{0604});
    EXPECT_EQ(folder.CountFiles(), 1u);
}

TEST(ReplaceFile, LinkStaysAndItsFileIsReplaced) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "real");
    fs::create_symlink("real/file", folder / "relative");
    fs::create_symlink(folder / "relative", folder / "chain");
    EXPECT_TRUE(WriteFile(folder / "chain", std::string_view("made"))) << "leads nowhere yet";
    EXPECT_TRUE(WriteFile(folder / "chain", std::string_view("replaced")));
    EXPECT_EQ(Text(folder / "real/file"), "replaced");
    EXPECT_TRUE(fs::is_symlink(folder / "relative") && fs::is_symlink(folder / "chain"));

    fs::create_symlink("b", folder / "a");
    fs::create_symlink("a", folder / "b");
    EXPECT_FALSE(WriteFile(folder / "a", std::string_view("round and round")));
}

TEST(ReplaceFile, FullDiskLeavesTheOldFileAndNothingElse) {
    const TemporaryFolder folder;
    WriteFile(folder / "cart.nes", std::string_view("old"));
    {
        const FileSizeLimit limit(4096);
        EXPECT_FALSE(WriteFile(folder / "cart.nes", std::string(4097, 'x')));
        EXPECT_TRUE(WriteFile(folder / "other", std::string(4096, 'x')));
    }
    EXPECT_EQ(Text(folder / "cart.nes"), "old");
    EXPECT_EQ(folder.CountFiles(), 2u);
}

TEST(ReplaceFile, WithoutCommitNothingHappened) {
    const TemporaryFolder folder;
    {
        auto first = ReplacementFile::Begin(folder / "file");
        ASSERT_TRUE(first);
        EXPECT_TRUE(first->Contents().WriteAt(0, std::vector<uint8_t>{1, 2, 3}));
        const ReplacementFile moved = std::move(*first);
        EXPECT_EQ(folder.CountFiles(), 1u);
    }
    EXPECT_EQ(folder.CountFiles(), 0u);
    auto file = ReplacementFile::Begin(folder / "file");
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->Commit());
    EXPECT_FALSE(file->Commit());
}

TEST(ReplaceFile, RefusesWhatIsNoPlainFile) {
    const TemporaryFolder folder;
    EXPECT_FALSE(WriteFile(folder.Path(), std::string_view("x")));
    EXPECT_FALSE(WriteFile(folder / "missing/file", std::string_view("x")));
    EXPECT_FALSE(WriteFile("", std::string_view("x")));
    // It stands for devices too: run by root, a fault would replace one of the system's.
    mkfifo((folder / "pipe").c_str(), 0600);
    EXPECT_FALSE(WriteFile(folder / "pipe", std::string_view("x")));
    EXPECT_TRUE(fs::is_fifo(folder / "pipe"));
}

// The longest name leaves no room for a longer one beside it.
TEST(ReplaceFile, LongestName) {
    const TemporaryFolder folder;
    const std::string name(255, 'n');
    EXPECT_TRUE(WriteFile(folder / name, std::string_view("text")));
    EXPECT_EQ(Text(folder / name), "text");
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

TEST(ReplaceFile, ProtectedFileOrFolderIsRefused) {
    const TemporaryFolder folder;
    const fs::path file = folder / "file";
    WriteFile(file, std::string_view("old"));
    const auto write = [&] { return bool(WriteFile(file, std::string_view("new"))); };
    fs::permissions(folder.Path(), fs::perms{0777});
    fs::permissions(file, fs::perms{0444});
    EXPECT_FALSE(AsOrdinaryUser(write)) << "a file that may not be written";
    fs::permissions(file, fs::perms{0666});
    fs::permissions(folder.Path(), fs::perms{0555});
    EXPECT_FALSE(AsOrdinaryUser(write)) << "a folder that may not be written";
    EXPECT_EQ(Text(file), "old");
    fs::permissions(folder.Path(), fs::perms{0777});
    EXPECT_TRUE(AsOrdinaryUser(write));
    EXPECT_EQ(Text(file), "new");
    EXPECT_EQ(folder.CountFiles(), 1u);
}

TEST(File, ReadsAndWritesAtOffsets) {
    const TemporaryFolder folder;
    auto file = File::Create(folder / "file");
    ASSERT_TRUE(file);
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

TEST(ReadFile, RefusesWhatItCannotHold) {
    const TemporaryFolder folder;
    WriteFile(folder / "file", std::string_view("12345"));
    EXPECT_TRUE(ReadFile(folder / "file", 5));
    EXPECT_FALSE(ReadFile(folder / "file", 4));
    EXPECT_FALSE(ReadFile(folder / "missing"));
    EXPECT_FALSE(ReadFile(folder.Path()));
    // A named pipe in a folder of games would stop the program for good.
    mkfifo((folder / "pipe.nes").c_str(), 0600);
    const auto pipe = File::OpenForReading(folder / "pipe.nes");
    std::vector<uint8_t> bytes(16);
    EXPECT_FALSE(pipe && pipe->ReadAt(0, bytes).ValueOr(0) > 0);
}

TEST(FileProblem, NamesTheFileAndTheKind) {
    using enum FileProblem::Kind;
    const TemporaryFolder folder;
    WriteFile(folder / "file", std::string_view("12345"));
    mkfifo((folder / "pipe").c_str(), 0600);
    const auto read = [&](const fs::path& name) { return ReadFile(folder / name, 4).Problem(); };
    const auto write = [&](const fs::path& name) {
        return WriteFile(folder / name, std::string_view("x")).Problem();
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
                 {write("pipe"), kNotRegular, "pipe"},
                 {read("file"), kTooLarge, "file"},
                 {write(longName), kNameTooLong, longName},
                 {MakeFolders(folder / "file/a/b").Problem(), kNotFolder, "file"},
                 {DeleteFile(folder / "file/a").Problem(), kNotFolder, "file"}};
    for (const auto& test : cases) {
        EXPECT_EQ(test.problem.kind, test.kind) << test.problem.file;
        EXPECT_EQ(test.problem.file, folder / test.file);
    }
    EXPECT_EQ(read("file").size, 5u);
    EXPECT_EQ(read("file").limit, 4u);
}

TEST(ScratchFile, ReplacesALongerOneAndLeavesNoHalves) {
    const TemporaryFolder folder;
    EXPECT_TRUE(WriteScratchFile(folder / "file", std::string_view("a longer text")));
    EXPECT_TRUE(WriteScratchFile(folder / "file", std::string_view("short")));
    EXPECT_EQ(Text(folder / "file"), "short");
    EXPECT_FALSE(WriteScratchFile(folder / "missing/file", std::string_view("x")));
    const FileSizeLimit fullDisk(4);
    const auto tooLong = WriteScratchFile(folder / "file", std::string_view("too long"));
    ASSERT_FALSE(tooLong);
    EXPECT_EQ(tooLong.Problem().kind, FileProblem::Kind::kTooLarge);
    EXPECT_FALSE(fs::exists(folder / "file"));
}

TEST(Folders, AreMadeLevelByLevel) {
    const TemporaryFolder folder;
    EXPECT_TRUE(MakeFolders(folder / "a/b/c"));
    EXPECT_TRUE(MakeFolders(folder / "a/b/c/"));
    EXPECT_TRUE(fs::is_directory(folder / "a/b/c"));
    WriteFile(folder / "file", std::string_view("x"));
    EXPECT_FALSE(MakeFolders(folder / "file"));
    EXPECT_FALSE(MakeFolders(folder / "file/below"));
}

TEST(Folders, RemovalStopsAtLinks) {
    const TemporaryFolder folder;
    MakeFolders(folder / "work/menu/build");
    MakeFolders(folder / "games");
    WriteFile(folder / "games/game.nes", std::string_view("x"));
    WriteFile(folder / "work/menu/build/file", std::string_view("x"));
    fs::create_directory_symlink(folder / "games", folder / "work/menu/games");
    EXPECT_TRUE(RemoveFolder(folder / "work"));
    EXPECT_FALSE(fs::exists(folder / "work"));
    EXPECT_TRUE(fs::exists(folder / "games/game.nes"));
    EXPECT_TRUE(RemoveFolder(folder / "work")) << "gone already";
    EXPECT_FALSE(RemoveFolder(""));
}

TEST(DeleteFile, MissingFileIsASuccess) {
    const TemporaryFolder folder;
    WriteFile(folder / "file", std::string_view("x"));
    EXPECT_TRUE(DeleteFile(folder / "file"));
    EXPECT_TRUE(DeleteFile(folder / "file"));
    EXPECT_FALSE(DeleteFile(""));
    EXPECT_FALSE(DeleteFile(folder.Path())) << "an empty folder is no file";
    fs::create_symlink("nowhere", folder / "link");
    EXPECT_TRUE(DeleteFile(folder / "link"));
    EXPECT_EQ(folder.CountFiles(), 0u);
}

}  // namespace
}  // namespace bw
