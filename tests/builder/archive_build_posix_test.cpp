// What only a POSIX system can tell of a build from archives: how often a file was opened, and what
// is known by two names.
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

TEST_F(ArchiveBuild, OpensTheArchiveTwiceAndNeverWritesOverIt) {
    std::vector<ArchiveMember> members;
    for (uint32_t i = 0; i < 40; ++i) {
        const std::string name = "game" + std::to_string(i);
        members.push_back({name + ".nes", ReadText(Add(name, {2, 1, 0}, i))});
    }
    std::ranges::reverse(members);
    for (const std::string name : {"all.7z", "all.tar.zst", "all.zip"}) {
        WriteArchive(folder_ / name, members);
        for (size_t i = 0; i < games_.size(); ++i)
            games_[i].path = PathText(folder_ / name / ("game" + std::to_string(i) + ".nes"));
        const OpenCounter opened(folder_ / name);
        ASSERT_TRUE(Build().done) << name;
        EXPECT_LE(opened.Count(), 2u) << name;
    }
    // The archive itself is an input.
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
