#include "build_fixture.h"
#include "common/archive_writer.h"

namespace bw {
namespace {

using namespace test;

using ArchiveBuild = BuildFixture;

TEST_F(ArchiveBuild, MakesTheCartOfThePlainFiles) {
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
        ASSERT_TRUE(Build().done) << name;
        EXPECT_TRUE(ReadText(folder_ / "out/cart.bin") == cart) << name;
        for (GameEntry& game : games_) {
            const std::filesystem::path path = TextPath(game.path);
            game.path = PathText(folder_ / path.filename());
        }
    }
}

}  // namespace
}  // namespace bw
