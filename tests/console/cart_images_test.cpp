// What a check makes of a cart's bytes: images of single games.
#include "builder/build_fixture.h"
#include "console/alone_image.h"

namespace bw {
namespace {

using namespace test;

class AloneImage : public BuildFixture {};

TEST_F(AloneImage, HasTheBytesOfTheImageThatWasBuiltIn) {
    const std::vector<std::filesystem::path> files{
        Add("nrom", {1, 1, 0, 1}, 1), Add("nrom_32", {2, 0, 0, 2}, 2), Add("small", {4, 3, 4}, 3),
        Add("large", {16, 32, 4, 11}, 4)};
    const std::filesystem::path alone = folder_ / "alone.nes";
    for (const auto board : {BoardType::kCoolboy, BoardType::kMindkids, BoardType::kCoolgirl}) {
        user_.output = OutputChoice{folder_ / "out" / "cart", RomFormat::kUnif};
        const BuildOutcome built = Build(board);
        ASSERT_TRUE(built.done);
        auto tables = ReadCart(built.output);
        ASSERT_TRUE(tables);
        for (size_t i = 0; i < files.size(); ++i) {
            ASSERT_TRUE(WriteAloneImage(built.output, *tables, tables->games[i], alone));
            std::string expected = ReadText(files[i]);
            // COOLBOY and MINDKIDS show an MMC3 game 128 KB at least.
            if (i == 2 && board != BoardType::kCoolgirl) {
                expected[4] = 8;
                expected.insert(16, expected.substr(16, 65536));
            }
            EXPECT_TRUE(ReadText(alone) == expected) << files[i];
        }
        // A file that was cut short: 0xFF from there on.
        const CartGame& last = tables->games[3];
        tables->romBytes = last.prgOffset + 100;
        ASSERT_TRUE(WriteAloneImage(built.output, *tables, last, alone));
        const std::string cut = ReadText(alone);
        EXPECT_EQ(cut.substr(0, 116), ReadText(files[3]).substr(0, 116));
        EXPECT_EQ(cut.size(), std::filesystem::file_size(files[3]));
        EXPECT_GE(cut.find_first_not_of('\xFF', 116), size_t{16} + last.prgBytes);
    }
}

}  // namespace
}  // namespace bw
