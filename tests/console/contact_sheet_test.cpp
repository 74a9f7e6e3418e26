// The sheet of a check, read back as a picture.
#include "console/contact_sheet.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "common/temporary_folder.h"
#include "designer/files/png_file.h"
#include "support/files.h"

namespace bw {
namespace {

Picture Read(const std::filesystem::path& file) {
    Picture picture;
    EXPECT_FALSE(DecodeAnyPng(*ReadFile(file), 16384, picture));
    return picture;
}

CheckedGame Game(uint32_t index, uint32_t colour) {
    CheckedGame game;
    game.index = index;
    game.name = u"A name of \u4E2D far more letters than a place of the sheet is wide";
    if (colour != 0) game.picture.pixels.assign(size_t{256} * 240, 0xFF000000 | colour);
    return game;
}

TEST(ContactSheet, ShowsEachGameOnceAndMarksWhatWasFound) {
    const TemporaryFolder folder;
    constexpr uint32_t kPlain = 0x123456, kFaulty = 0x654321, kNoted = 0x224466;
    constexpr uint32_t kRed = 0xFF4D4D, kAmber = 0xFFB02E;
    for (const uint32_t count : {4u, 60u}) {  // at full and at half size
        std::vector<CheckedGame> games;
        for (uint32_t i = 0; i < count; ++i)
            games.push_back(Game(i, 0));
        games[0] = Game(0, kPlain);
        games[1] = Game(1, kFaulty);
        games[1].findings = {{FindingKind::kSaves, FindingSeverity::kNote, u""},
                             {FindingKind::kBlack, FindingSeverity::kError, u""}};
        games[count - 1] = Game(count - 1, kNoted);
        games[count - 1].findings = {{FindingKind::kSaves, FindingSeverity::kNote, u""}};
        ASSERT_TRUE(WriteContactSheet(games, folder / "sheet.png"));
        const Picture sheet = Read(folder / "sheet.png");
        EXPECT_GT(sheet.width, sheet.height);
        EXPECT_LT(sheet.width, sheet.height * 2);
        const auto pixels = [&](uint32_t colour) {
            return std::ranges::count(sheet.pixels, colour);
        };
        const ptrdiff_t whole = count == 4 ? 256 * 240 : 128 * 120;
        for (const uint32_t colour : {kPlain, kFaulty, kNoted})
            EXPECT_EQ(pixels(colour), whole);
        // A frame of three pixels, and some letters.
        const ptrdiff_t frame = count == 4 ? 6 * (256 + 240 + 6) : 6 * (128 + 120 + 6);
        for (const uint32_t colour : {kRed, kAmber}) {
            EXPECT_GT(pixels(colour), frame + 50);
            EXPECT_LT(pixels(colour), frame + 700);
        }
    }
    ASSERT_TRUE(WriteContactSheet({}, folder / "sheet.png"));
}

TEST(ContactSheet, APictureIsEnlarged) {
    const TemporaryFolder folder;
    ConsolePicture picture = Game(0, 0x102030).picture;
    picture.pixels[257] = 0xFFABCDEF;
    ASSERT_TRUE(WritePicture(picture, 3, folder / "one.png"));
    const Picture read = Read(folder / "one.png");
    EXPECT_EQ(read.width * read.height, 768u * 720u);
    EXPECT_EQ(std::ranges::count(read.pixels, 0xABCDEFu), 9);
    EXPECT_EQ(read.pixels[768 * 3 + 3], 0xABCDEFu);
    EXPECT_FALSE(WritePicture({}, 1, folder / "one.png"));
}

}  // namespace
}  // namespace bw
