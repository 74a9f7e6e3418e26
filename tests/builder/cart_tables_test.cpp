// Carts read back: what the tables tell of real builds, and files that are no carts.
#include "builder/tables/cart_tables.h"

#include <tuple>

#include "build_fixture.h"
#include "test_items.h"

namespace bw {
namespace {

using namespace test;

// A game placed, encoded and decoded by what its record tells.
void ExpectBack(BoardType board, MulticartItem item, uint32_t seed) {
    const bool coolgirl = board == BoardType::kCoolgirl;
    if (!coolgirl) ApplyPrgMinimum({&item, 1});
    const uint32_t limit = LimitOf(board).romBytes;
    item = Placed(item, seed * item.prgSpan % limit, seed * (item.chrSpan + kChrUnit) % limit);
    item.mirroring = seed & 1;
    item.fourScreen = seed >> 1 & 1;
    MulticartItem known = item;
    known.mapper = known.prgOffset = known.prgUnits = 0;
    if (!coolgirl) known.chrOffset = 0;
    const auto encode = coolgirl ? CoolgirlRegisters : CoolboyRegisters;
    const auto decode = coolgirl ? ItemOfCoolgirlRegisters : ItemOfCoolboyRegisters;
    const auto back = decode(encode(item), known);
    ASSERT_TRUE(back);
    EXPECT_EQ(std::tie(back->prgOffset, back->prgSpan, back->chrOffset),
              std::tie(item.prgOffset, item.prgSpan, item.chrOffset));
    EXPECT_EQ(encode(*back), encode(item));
    EXPECT_LE(back->mapper, item.mapper);
}

TEST(BoardRegisters, ComeBackAsTheItemThatTheyWereMadeOf) {
    for (const BoardType board : {BoardType::kCoolboy, BoardType::kCoolgirl}) {
        for (uint32_t mapper = 0; mapper < 256; ++mapper) {
            if (!BoardTakesMapper(board, mapper)) continue;
            const MapperCapability& row = *FindMapperCapability(mapper);
            for (const uint32_t prg : row.prgSizes) {
                for (const uint32_t chr : row.chrSizes) {
                    SCOPED_TRACE(fmt::format("{} {} {}", mapper, prg, chr));
                    for (const uint32_t seed : {0u, 0x155u, 0x2AAu, 0x7FFu})
                        ExpectBack(board, Game(0, prg, chr, mapper), seed);
                }
            }
        }
    }
}

class CartTablesTest : public BuildFixture {
  protected:
    // A built cart, read back and compared with what was built.
    CartTables BuildAndRead(BoardType board, RomFormat format = RomFormat::kNes20,
                            bool builtIn = true) {
        user_.output = OutputChoice{folder_ / "out" / "cart", format};
        outcome_ = Build(board);
        EXPECT_TRUE(outcome_.done) << testing::PrintToString(user_.messages);
        const FileResult<CartTables> read = ReadCart(outcome_.output);
        if (!read) ADD_FAILURE() << ToUtf8(NoCartText(read.Problem(), Language::kEnglish));
        if (!read) return {};
        EXPECT_EQ(std::tuple(read->board, read->format, read->romBytes, read->ownProgram),
                  std::tuple(board, format, outcome_.layout.romSize, builtIn));
        EXPECT_EQ(read->games.size(), outcome_.finalData.size());
        for (const MulticartItem& item : outcome_.layout.items) {
            if (item.isMenu != 0) {
                EXPECT_EQ(read->menuOffset, item.prgOffset);
                if (builtIn) {
                    EXPECT_EQ(read->menuUnits, item.prgUnits);
                }
                continue;
            }
            const CartGame& game = read->games.at(item.index);
            const bool coolgirl = board == BoardType::kCoolgirl;
            const uint32_t mapper = coolgirl || item.mapper == 0 ? item.mapper : 4;
            EXPECT_EQ(std::tuple(game.prgOffset, game.prgBytes, game.chrBytes, game.mapper),
                      std::tuple(item.prgOffset, item.prgSpan, item.chrBytes, mapper));
            EXPECT_EQ(item.chrBytes != 0 ? game.chrOffset : 0, item.chrOffset);
            EXPECT_EQ(game.vertical | game.battery << 1 | game.fourScreen << 2,
                      outcome_.finalData[item.index].flags);
            EXPECT_EQ(game.registers, outcome_.finalData[item.index].registers);
            EXPECT_EQ(game.registersOpen, !coolgirl && item.mapper == 0);
        }
        return *read;
    }
    void AddShapes() {
        Add("alpha", {1, 1, 0, 1}, 1);
        Add("beta", {2, 1, 0, 2}, 2);
        Add("gamma", {4, 3, 4, 3}, 3);
        Add("delta", {16, 0, 4, 8}, 4);
        Add("epsilon", {32, 32, 4}, 5);
        Add("zeta", {16, 16, 74}, 6);
    }
    // Refused after `bytes` were written at an offset of the file.
    void ExpectDamaged(const std::string& cart, size_t at, const std::string& bytes) {
        std::string damaged = cart;
        damaged.replace(at, bytes.size(), bytes);
        ExpectNoCart(damaged, std::to_string(at).c_str());
    }
    void ExpectNoCart(const std::string& bytes, const char* what) {
        WriteText(folder_ / "damaged", bytes);
        const FileResult<CartTables> read = ReadCart(folder_ / "damaged");
        ASSERT_FALSE(read) << what;
        EXPECT_EQ(read.Problem().kind, FileProblem::Kind::kWrongKind) << what;
        EXPECT_THAT(ToUtf8(NoCartText(read.Problem(), Language::kEnglish)),
                    HasSubstr("damaged isn't"));
    }

    BuildOutcome outcome_;
};

TEST_F(CartTablesTest, TellWhatWasBuilt) {
    AddShapes();
    for (const RomFormat format : {RomFormat::kNes20, RomFormat::kUnif, RomFormat::kBinary}) {
        for (const uint32_t size : {8u, 16u, 32u}) {
            settings_.MenuSize = size;
            settings_.Music = size / 8;
            const CartTables cart = BuildAndRead(BoardType::kCoolboy, format);
            ASSERT_EQ(cart.games.size(), 6u);
            EXPECT_EQ(cart.games[2].name, u"GAMMA");
        }
        BuildAndRead(BoardType::kMindkids, format);
        Add("eta", {16, 0, 2}, 7);
        Add("theta", {8, 16, 42}, 8);
        settings_.CustomEnable = true;
        BuildAndRead(BoardType::kCoolgirl, format);
        settings_.CustomEnable = false;
        games_.resize(6);
    }
    // Beside the ROM: a longer file, and one that ends within a game.
    const std::string cart = ReadText(outcome_.output);
    for (const std::string& bytes :
         {cart + std::string(9000, '\xFF'), cart.substr(0, cart.size() - 9)}) {
        WriteText(folder_ / "other.bin", bytes);
        const auto read = ReadCart(folder_ / "other.bin");
        ASSERT_TRUE(read);
        EXPECT_EQ(read->board, BoardType::kCoolgirl);
        EXPECT_EQ(read->romBytes, bytes.size());
        EXPECT_EQ(read->games.size(), 8u);
    }
}

TEST_F(CartTablesTest, TellLongListsAndNamesOfAnyForm) {
    AddMany(1024);
    for (size_t i = 0; i < games_.size(); ++i)
        games_[i].name = ToWide(fmt::format("Name {:04} {}", i, std::string(i % 300, 'x')));
    games_[7].name = u"Quote \" \u0080 \u4E2D";
    for (const BoardType board : {BoardType::kMindkids, BoardType::kCoolgirl}) {
        const CartTables cart = BuildAndRead(board);
        ASSERT_EQ(cart.games.size(), 1024u);
        EXPECT_EQ(cart.games[7].name, u"QUOTE \" \u0080 ?");
        for (size_t i = 1000; i < 1024; ++i)
            EXPECT_TRUE(ToUtf8(cart.games[i].name).starts_with(fmt::format("NAME {:04} XX", i)));
    }
}

TEST_F(CartTablesTest, AreFoundInAMenuOfSomebodysOwn) {
    AddShapes();
    for (const int units : {8, 64}) {
        WriteText(folder_ / "own.asm",
                  fmt::format(" INCLUDE \"build/game_config.asm\"\n .INESPRG {}\n .INESMAP 4\n"
                              " .BANK 3\n .ORG $A000\n INCLUDE \"build/game_list_0.asm\"\n"
                              " .BANK 9\n .ORG $A000\n INCLUDE \"build/game_final_data_0.asm\"\n",
                              units));
        settings_.ExternMenuEnable = true;
        settings_.ExternMenuPath = folder_ / "own.asm";
        BuildAndRead(BoardType::kCoolboy, RomFormat::kUnif, false);
        BuildAndRead(BoardType::kCoolgirl, RomFormat::kBinary, false);
    }
}

TEST_F(CartTablesTest, OfOtherAndDamagedFilesAreNone) {
    Add("game", {32, 32, 4});
    ExpectNoCart("", "empty");
    ExpectNoCart(ReadText(folder_ / "game.nes"), "a game");
    ExpectNoCart(Noise(1 << 20, 5), "noise");
    ExpectNoCart(std::string(1 << 20, '\0'), "zeros");
    games_.clear();
    AddShapes();
    BuildAndRead(BoardType::kCoolboy);
    const std::string cart = ReadText(outcome_.output);
    const size_t rom = 16;
    ExpectDamaged(cart, 6, "\x10");                          // another mapper
    ExpectDamaged(cart, 8, "\x31");                          // another submapper
    ExpectDamaged(cart, 4, std::string(1, '\x10'));          // too small for the menu
    ExpectDamaged(cart, rom + 0x3F * 0x2000 + 2, "\1");      // a record's index
    ExpectDamaged(cart, rom + 0x3F * 0x2000 + 0x800, "\1");  // a name's
    ExpectDamaged(cart, rom + 0x33 * 0x2000 + 2, "\x10");    // the first pointer
    ExpectDamaged(cart, rom + 0x37 * 0x2000 + 14, "\x06");   // a name's length
    ExpectDamaged(cart, rom + 0x33 * 0x2000 + 14 + 9, std::string(1, '\0'));  // no lock
    ExpectNoCart(cart.substr(0, 0x7F000), "cut off in the menu");

    // UNIF in another order of its chunks.
    const std::string data = cart.substr(rom, 0x80000);
    const std::string prg = std::string("PRG0") + std::string("\0\0\x08\0", 4) + data;
    const std::string name = std::string("MAPR\x08\0\0\0MINDKIDS", 16);
    const std::string mirror = std::string("MIRR\x01\0\0\0\x05", 9);
    const std::string head = "UNIF" + std::string(28, '\0');
    WriteText(folder_ / "other.unf", head + mirror + prg + name + "\0tail");
    const auto read = ReadCart(folder_ / "other.unf");
    ASSERT_TRUE(read);
    EXPECT_EQ(read->board, BoardType::kMindkids);
    EXPECT_EQ(read->romStart, 32u + 9 + 8);
    ExpectNoCart(head + prg, "no board");
    ExpectNoCart(head + name, "no ROM");
    ExpectNoCart(head + name + prg + "PRG1" + std::string(4, '\0'), "two ROMs");
}

}  // namespace
}  // namespace bw
