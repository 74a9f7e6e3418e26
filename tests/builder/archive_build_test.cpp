#include <sys/inotify.h>
#include <unistd.h>

#include "build_fixture.h"
#include "common/archive_writer.h"

namespace bw {
namespace {

using namespace test;

// How often a file was opened since.
class OpenCounter {
  public:
    explicit OpenCounter(const std::filesystem::path& file)
        : descriptor_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        EXPECT_GE(inotify_add_watch(descriptor_, file.c_str(), IN_OPEN | IN_ACCESS), 0);
    }
    OpenCounter(const OpenCounter&) = delete;
    OpenCounter& operator=(const OpenCounter&) = delete;
    ~OpenCounter() { close(descriptor_); }
    size_t Count() const {
        size_t opened = 0;
        inotify_event event{};  // of a watch on a file, without a name
        while (read(descriptor_, &event, sizeof event) == sizeof event)
            opened += (event.mask & IN_OPEN) != 0 ? 1 : 0;
        return opened;
    }

  private:
    int descriptor_;
};

using ArchiveBuild = BuildFixture;

TEST_F(ArchiveBuild, MakesTheCartOfThePlainFilesAndOpensTheArchiveTwice) {
    std::vector<ArchiveMember> members;
    for (uint32_t i = 0; i < 40; ++i) {
        const std::string name = "game" + std::to_string(i);
        const ImageShape shape{i % 3 == 0 ? 8 : 2, static_cast<int>(i % 2), i % 3 == 0 ? 4 : 0};
        const auto file = Add(name, shape, i % 35);
        members.push_back({name + ".nes", ReadText(file)});
    }
    ASSERT_TRUE(Build().done);
    const std::string cart = ReadText(folder_ / "out/cart.bin");
    // Another order than the list's.
    std::ranges::reverse(members);
    std::swap(members[3], members[30]);
    for (const std::string name : {"all.zip", "all.7z", "all.tar.zst"}) {
        WriteArchive(folder_ / name, members);
        for (GameEntry& game : games_) {
            const std::filesystem::path member = TextPath(game.path).filename();
            game.path = PathText(folder_ / name / member);
        }
        const OpenCounter opened(folder_ / name);
        ASSERT_TRUE(Build().done) << name;
        EXPECT_LE(opened.Count(), 2u) << name;
        EXPECT_TRUE(ReadText(folder_ / "out/cart.bin") == cart) << name;
        for (GameEntry& game : games_) {
            const std::filesystem::path path = TextPath(game.path);
            game.path = PathText(folder_ / path.filename());
        }
    }
    // The archive itself is an input.
    games_[0].path = PathText(folder_ / "all.zip" / "game0.nes");
    std::filesystem::rename(folder_ / "all.zip", folder_ / "out/cart.bin.zip");
    std::filesystem::create_symlink("out/cart.bin.zip", folder_ / "all.zip");
    std::filesystem::remove(folder_ / "out/cart.bin");
    std::filesystem::create_hard_link(folder_ / "out/cart.bin.zip", folder_ / "out/cart.bin");
    user_.messages.clear();
    EXPECT_FALSE(Build().done);
    EXPECT_THAT(user_.messages, SizeIs(1));
}

}  // namespace
}  // namespace bw
