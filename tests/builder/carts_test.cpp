// Carts opened again: what a build noted down of its games comes back, and what differs is found.
#include <algorithm>

#include "build_fixture.h"
#include "builder/carts/cart_compare.h"
#include "builder/carts/cart_split.h"
#include "builder/tables/cart_manifest.h"
#include "builder/tables/cart_tables.h"

namespace bw {
namespace {

using namespace test;
namespace fs = std::filesystem;

class CartsTest : public BuildFixture {
  protected:
    void AddShapes(BoardType board) {
        Add("alpha", {1, 1, 0, 1}, 1);   // NROM of 16 KB
        Add("beta", {2, 0, 0, 2}, 2);    // CHR RAM, a battery
        Add("gamma", {4, 3, 4, 3}, 3);   // less than COOLBOY shows; CHR that is rounded up
        Add("delta", {16, 8, 4, 8}, 4);  // four screens
        Add("epsilon", {8, 0, 74}, 5);   // as mapper 4 on COOLBOY
        Add("alpha again", {1, 1, 0, 1}, 1);
        if (board == BoardType::kCoolgirl) Add("zeta", {8, 16, 42}, 6);
        // A NES 2.0 header with a submapper and a region.
        std::string nes20 = ReadText(Add("eta", {8, 8, 4}, 7));
        nes20.replace(7, 6, std::string("\x08\x10\0\0\x07\x01", 6));
        WriteText(folder_ / "eta.nes", nes20);
    }
    void BuildCart(BoardType board, RomFormat format = RomFormat::kBinary) {
        user_.output = OutputChoice{folder_ / "out" / "cart", format};
        outcome_ = Build(board);
        ASSERT_TRUE(outcome_.done) << testing::PrintToString(user_.messages);
    }
    CartContents Read(const fs::path& cart) {
        FileResult<CartContents> read = ReadCartContents(cart);
        EXPECT_TRUE(read) << cart;
        return read ? *read : CartContents{};
    }
    std::vector<SplitGame> Split(const fs::path& cart, const fs::path& folder) {
        const auto games = SplitCart(cart, Read(cart), folder);
        EXPECT_TRUE(games);
        return games ? *games : std::vector<SplitGame>{};
    }
    // The cart's games in a new folder, as they were built in, byte for byte.
    std::vector<SplitGame> ExpectSources(const fs::path& cart) {
        const std::vector<SplitGame> games =
            Split(cart, folder_ / "split" / std::to_string(splits_++));
        EXPECT_EQ(games.size(), games_.size());
        for (size_t i = 0; i < games.size(); ++i) {
            EXPECT_EQ(games[i].end, SplitEnd::kRight) << i;
            EXPECT_TRUE(ReadText(games[i].file) == ReadText(TextPath(games_[i].path))) << i;
        }
        return games;
    }
    fs::path Dump(const std::string& bytes) {
        WriteText(folder_ / "dump", bytes);
        return folder_ / "dump";
    }
    CartComparison Compare(const fs::path& dump, uint32_t sector = 64) {
        const auto compared =
            CompareCart(outcome_.output, Read(outcome_.output), dump, sector * 1024);
        EXPECT_TRUE(compared);
        return compared ? *compared : CartComparison{};
    }
    // Where the manifest lies in a bare ROM.
    size_t ManifestAt(BoardType board) const {
        return MenuOffset(8, board) + ManifestRoomOf(8, board, games_.size())->offset;
    }

    BuildOutcome outcome_;
    int splits_ = 0;
};

TEST_F(CartsTest, GiveTheirGamesBackAsTheyWereBuiltIn) {
    for (const BoardType board :
         {BoardType::kCoolboy, BoardType::kMindkids, BoardType::kCoolgirl}) {
        games_.clear();
        AddShapes(board);
        settings_.MenuSize = 8u << static_cast<int>(board) % 3;
        for (const RomFormat format : {RomFormat::kNes20, RomFormat::kUnif, RomFormat::kBinary}) {
            settings_.ShowNumberOrder = format != RomFormat::kNes20;
            settings_.ShowNumberFill = format == RomFormat::kUnif;
            BuildCart(board, format);
            const CartContents cart = Read(outcome_.output);
            EXPECT_TRUE(cart.hasManifest);
            EXPECT_EQ(cart.games[2].name, u"GAMMA");
            ExpectSources(outcome_.output);
        }
        // What a programmer reads of a larger chip.
        const std::string rom = ReadText(outcome_.output);
        ExpectSources(Dump(rom + std::string(100000, '\xFF')));
        const auto games = ExpectSources(Dump(rom + Noise(100000, 9)));
        // And in again: the same places and registers.
        const BuildOutcome first = outcome_;
        games_.clear();
        for (const SplitGame& game : games) {
            games_.emplace_back(game.file);
            games_.back().checked = true;
        }
        BuildCart(board);
        for (size_t i = 0; i < games.size(); ++i) {
            EXPECT_EQ(outcome_.finalData[i].registers, first.finalData[i].registers) << i;
            EXPECT_EQ(outcome_.layout.items[i].prgOffset, first.layout.items[i].prgOffset) << i;
        }
    }
}

TEST_F(CartsTest, NoteDownLongListsWithAllThatHasRoom) {
    for (const BoardType board : {BoardType::kCoolboy, BoardType::kCoolgirl}) {
        for (const bool long_ : {false, true}) {
            games_.clear();
            AddMany(1024);
            std::string image = ReadText(folder_ / "many.nes");
            if (long_) image.replace(12, 1, "\1");
            WriteText(folder_ / "many.nes", image);
            settings_.ShowNumberOrder = settings_.ShowNumberFill = long_;
            BuildCart(board);
            const CartContents cart = Read(outcome_.output);
            for (const size_t game : {0u, 585u, 1023u}) {
                ASSERT_TRUE(cart.games.at(game).crcs);
                EXPECT_EQ(cart.games[game].header.bytes[12], 0);
                EXPECT_EQ(cart.games[game].name, u"MANY");
            }
        }
    }
}

TEST_F(CartsTest, WithoutNotesTellWhatTheTablesDo) {
    for (const BoardType board : {BoardType::kMindkids, BoardType::kCoolgirl}) {
        games_.clear();
        AddShapes(board);
        BuildCart(board);
        std::string rom = ReadText(outcome_.output);
        const std::vector<uint8_t> bytes(rom.begin(), rom.end());
        CartManifest manifest =
            UnpackManifest(std::span(bytes).subspan(ManifestAt(board))).value_or(CartManifest{});
        ASSERT_EQ(manifest.size(), games_.size());
        rom.replace(ManifestAt(board), 4, "\xFF\xFF\xFF\xFF");
        const CartContents cart = Read(Dump(rom));
        const bool coolgirl = board == BoardType::kCoolgirl;
        const auto guessed = [&](size_t game) {
            return std::pair(cart.games[game].mapperGuessed, cart.games[game].sizeGuessed);
        };
        EXPECT_EQ(guessed(0), std::pair(false, false));
        EXPECT_EQ(guessed(2), std::pair(!coolgirl, !coolgirl));
        EXPECT_EQ(guessed(3), std::pair(!coolgirl, false));
        EXPECT_THAT(ToUtf8(NotKnownText(cart.games[2], Language::kEnglish)),
                    HasSubstr(coolgirl ? "no sums" : "64 KB of PRG is likely"));
        const auto split = Split(folder_ / "dump", folder_ / "split" / BoardName(board));
        for (const size_t game : {0u, 1u, 2u, 3u, 5u})
            EXPECT_TRUE(ReadText(split[game].file) == ReadText(TextPath(games_[game].path)))
                << game;

        // Notes that a game's record doesn't bear out are none, but the others hold.
        manifest[1].header.bytes[6] ^= 1;
        std::vector<uint8_t> packed = PackManifest(manifest);
        rom.replace(ManifestAt(board), packed.size(), std::string(packed.begin(), packed.end()));
        const CartContents other = Read(Dump(rom));
        EXPECT_FALSE(other.games[1].crcs);
        EXPECT_TRUE(other.games[0].crcs && other.games[2].crcs);
        // Every bit of them is under the sum.
        for (size_t at = 0; at < packed.size(); at += 7) {
            std::vector<uint8_t> damaged = packed;
            damaged[at] ^= static_cast<uint8_t>(1 << at % 8);
            EXPECT_FALSE(UnpackManifest(damaged)) << at;
            EXPECT_FALSE(UnpackManifest(std::span(packed).first(at))) << at;
        }
    }
}

TEST_F(CartsTest, OnlyUnusedBytesOfTheMenuAreWritten) {
    std::vector<uint8_t> menu(8 * kPrgUnit, 0xFF);
    const ManifestRoom room = *ManifestRoomOf(8, BoardType::kCoolboy, 3);
    for (const uint32_t used : {room.offset, room.offset + 20}) {
        menu[used] = 0;
        const std::vector<uint8_t> before = menu;
        EXPECT_FALSE(AddManifest(menu, BoardType::kCoolboy, CartManifest(3)));
        EXPECT_EQ(menu, before);
        menu[used] = 0xFF;
    }
    menu[room.offset - 1] = 0;
    EXPECT_TRUE(AddManifest(menu, BoardType::kCoolboy, CartManifest(3)));
}

TEST_F(CartsTest, AFlippedBitIsFoundByTheGameAndTheSector) {
    AddShapes(BoardType::kCoolboy);
    BuildCart(BoardType::kCoolboy);
    const std::string rom = ReadText(outcome_.output);
    const CartGame game = Read(outcome_.output).tables.games[3];
    std::string damaged = rom;
    const uint64_t at = game.chrOffset + 4097u;
    damaged[at] = static_cast<char>(damaged[at] ^ 0x10);
    const std::vector<SplitGame> games = Split(Dump(damaged), folder_ / "split");
    for (size_t i = 0; i < games.size(); ++i)
        EXPECT_EQ(games[i].end, i == 3 ? SplitEnd::kWrong : SplitEnd::kRight) << i;
    for (const uint32_t sector : kSectorSizes) {
        const CartComparison found = Compare(Dump(damaged), sector);
        EXPECT_EQ(std::pair(found.differing, found.menuBytes), std::pair(uint64_t{1}, uint64_t{0}));
        EXPECT_THAT(found.sectors, ElementsAre(at / (sector * 1024)));
        ASSERT_EQ(found.games.size(), 1u);
        EXPECT_EQ(found.games[0].game, 3u);
    }
    // In the menu, across the border of two blocks, and in a game that lies there several times.
    damaged = rom;
    const uint64_t gamma = Read(outcome_.output).tables.games[2].prgOffset + 5 * kPrgUnit;
    for (const uint64_t place : {uint64_t{0x7FFFF}, uint64_t{0x80000}, gamma})
        damaged[place] = static_cast<char>(~damaged[place]);
    const CartComparison found = Compare(Dump(damaged));
    EXPECT_EQ(std::pair(found.differing, found.menuBytes), std::pair(uint64_t{3}, uint64_t{1}));
    EXPECT_TRUE(std::ranges::any_of(found.places, [](const CartDifference& place) {
        return place.begin == 0x7FFFF && place.end == 0x80001;
    }));

    // Shorter and longer.
    EXPECT_TRUE(Compare(Dump(rom)).Same());
    const CartComparison shorter = Compare(Dump(rom.substr(0, rom.size() - 70000)));
    EXPECT_EQ(shorter.differing + shorter.missingBytes, 140000u);
    for (const bool erased : {true, false}) {
        const CartComparison longer =
            Compare(Dump(rom + (erased ? std::string(600000, '\xFF') : Noise(600000, 3))));
        EXPECT_TRUE(longer.Same());
        EXPECT_EQ(std::pair(longer.behindBytes, longer.behindErased),
                  std::pair(uint64_t{600000}, erased));
    }
    // Filling at the cart's end is none of it; a container is no part of the ROM.
    const fs::path filled = folder_ / "filled.bin";
    WriteText(filled, rom + std::string(300000, '\xFF'));
    BuildCart(BoardType::kCoolboy, RomFormat::kUnif);
    const auto same = CompareCart(filled, Read(filled), outcome_.output, 65536);
    ASSERT_TRUE(same);
    EXPECT_TRUE(same->Same());
}

TEST_F(CartsTest, SplittingSparesFilesAndTakesAnyName) {
    Add("a", {1, 0, 0}, 1);
    Add("b", {1, 0, 0}, 2);
    Add("c", {1, 0, 0}, 3);
    games_[0].name = u"a/b:c*d?e\"<f>|g\\.. .";
    games_[1].name = u"";
    games_[2].name = u"CON";
    BuildCart(BoardType::kCoolboy);
    const fs::path folder = folder_ / "new" / "split";
    const std::vector<SplitGame> games = Split(outcome_.output, folder);
    ASSERT_EQ(games.size(), 3u);
    EXPECT_EQ(games[0].file.filename(), "001 A_B_C_D_E__F__G_.nes");
    EXPECT_EQ(games[1].file.filename(), "002.nes");
    WriteText(games[1].file, "mine");
    fs::remove(games[2].file);
    fs::create_directory(games[2].file);
    const std::vector<SplitGame> again = Split(outcome_.output, folder);
    EXPECT_EQ(again[0].end, SplitEnd::kRight);
    EXPECT_EQ(again[1].end, SplitEnd::kExists);
    EXPECT_EQ(again[2].end, SplitEnd::kExists);
    EXPECT_EQ(ReadText(games[1].file), "mine");

    Add("behind", {32, 0, 4}, 4);
    BuildCart(BoardType::kCoolboy);
    const std::string rom = ReadText(outcome_.output);
    const fs::path cut = Dump(rom.substr(0, rom.size() - 1));
    const std::vector<SplitGame> short_ = Split(cut, folder_ / "short");
    EXPECT_EQ(std::ranges::count(short_, SplitEnd::kCutShort, &SplitGame::end), 1);
    const auto stopped = SplitCart(outcome_.output, Read(outcome_.output), folder_ / "stopped",
                                   [](size_t done, size_t) { return done < 2; });
    ASSERT_TRUE(stopped);
    EXPECT_EQ(stopped->size(), 2u);
}

}  // namespace
}  // namespace bw
