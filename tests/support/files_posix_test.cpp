// What POSIX file systems have: permission bits, links that anybody may make, named pipes.
#include <functional>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "common/game_image.h"
#include "common/special_files.h"
#include "common/temporary_folder.h"
#include "support/files.h"

namespace bw {
namespace {

namespace fs = std::filesystem;
using namespace std::string_view_literals;
using test::ReadText;

struct FilesOnPosix : testing::Test {
    TemporaryFolder folder_;
};

fs::perms Mode(const fs::path& path) {
    return fs::status(path).permissions();
}

TEST_F(FilesOnPosix, NewFileHasTheUsersUsualPermissionsAndTheOldOnesStay) {
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

TEST_F(FilesOnPosix, LinkStaysAndItsFileIsReplaced) {
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

TEST_F(FilesOnPosix, ProtectedFileOrFolderIsRefused) {
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

TEST_F(FilesOnPosix, NamedPipeNeitherStopsNorIsReplaced) {
    const fs::path pipe = test::SpecialFiles(folder_.Path())[0];
    // One in a folder of games would stop the program for good.
    const auto opened = File::OpenForReading(pipe);
    std::vector<uint8_t> bytes(16);
    EXPECT_FALSE(opened && opened->ReadAt(0, bytes).ValueOr(0) > 0);
    EXPECT_FALSE(WriteFile(pipe, "x"sv));
    EXPECT_TRUE(fs::is_fifo(pipe));
}

TEST_F(FilesOnPosix, FoldersRemovalStopsAtLinks) {
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
    fs::create_symlink("nowhere", folder_ / "link");
    EXPECT_TRUE(DeleteFile(folder_ / "link"));
    EXPECT_EQ(folder_.CountFiles(), 1u);
}

}  // namespace
}  // namespace bw
