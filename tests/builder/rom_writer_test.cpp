#include "builder/output/rom_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "common/file_size_limit.h"
#include "common/game_image.h"
#include "common/temporary_folder.h"

namespace bw {
namespace {

using test::ImageBytes;
using test::ReadText;
using test::WriteText;
using testing::ElementsAre;

std::vector<int> HeaderOf(uint32_t romSize, BoardType board) {
    const auto bytes = MakeNes20Header(romSize, board).bytes;
    return {bytes.begin() + 4, bytes.begin() + 12};
}

TEST(RomHeader, Nes20) {
    constexpr uint32_t kMegabyte = 1 << 20;
    EXPECT_THAT(HeaderOf(kMegabyte, BoardType::kCoolboy),
                ElementsAre(64, 0, 0xC0, 0x08, 0x01, 0, 0x70, 12));
    EXPECT_THAT(HeaderOf(kMegabyte, BoardType::kMindkids),
                ElementsAre(64, 0, 0xC0, 0x08, 0x11, 0, 0x70, 12));
    EXPECT_THAT(HeaderOf(kMegabyte, BoardType::kCoolgirl),
                ElementsAre(64, 0, 0x62, 0x58, 0x01, 0, 0x90, 12));
    EXPECT_THAT(HeaderOf(62898176, BoardType::kCoolgirl),
                ElementsAre(0xFF, 0, 0x62, 0x58, 0x01, 0x0E, 0x90, 12));
    EXPECT_THAT(HeaderOf(128 * kMegabyte, BoardType::kCoolgirl),
                ElementsAre(108, 0, 0x62, 0x58, 0x01, 0x0F, 0x90, 12));
    EXPECT_EQ(MakeNes20Header(128 * kMegabyte, BoardType::kCoolgirl).fileSize, 134217744u);
    EXPECT_EQ(MakeNes20Header(100 * kMegabyte, BoardType::kCoolgirl).fileSize, 134217744u);
    EXPECT_EQ(MakeNes20Header(62898176, BoardType::kCoolgirl).fileSize, 62898192u);
    EXPECT_EQ(MakeNes20Header(62898176 + 16384, BoardType::kCoolgirl).fileSize, 67108880u);
}

TEST(RomHeader, Unif) {
    UnifChunks chunks;
    chunks.SetBoardName("COOLGIRL");
    chunks.SetBoardName("COOLBOY");
    chunks.SetMirroring(5);
    chunks.SetPrgSize(16, 4096);
    chunks.SetPrgSize(0, 0x12340);
    const std::vector<uint8_t> head = chunks.Head();
    const std::string text(head.begin(), head.end());
    using namespace std::string_literals;
    EXPECT_EQ(text, "UNIF\x05\0\0\0"s + std::string(24, '\0') + "MAPR\x08\0\0\0COOLBOY\0"s +
                        "MIRR\x01\0\0\0\x05"s + "PRG0\x40\x23\x01\0"s);
}

TEST(RomHeader, ExtensionOfTheFormat) {
    EXPECT_EQ(WithFormatExtension("a/x.NES", RomFormat::kNes20), "a/x.NES");
    EXPECT_EQ(WithFormatExtension("a/x.nes", RomFormat::kBinary), "a/x.nes.bin");
    EXPECT_EQ(WithFormatExtension("a/x", RomFormat::kUnif), "a/x.unf");
}

// A menu and three games laid out by hand, with a gap, a repeated PRG and a rounded CHR.
class RomWriter : public testing::Test {
  protected:
    RomWriter() {
        Add({8, 0, 4}, 1, 0x60000, 0);
        layout_.items[0].isMenu = 1;
        Add({4, 3, 4}, 2, 0, 0x40000);
        layout_.items[1].SetPrgUnits(8);
        layout_.items[1].SetChrUnits(4);
        Add({2, 1, 0}, 3, 0x20000, 0x28000);
        layout_.romSize = 0x80000;
    }

    void Add(test::ImageShape shape, uint32_t seed, uint32_t prg, uint32_t chr) {
        const auto file = folder_ / ("image" + std::to_string(seed) + ".nes");
        WriteText(file, ImageBytes(shape, seed));
        MulticartItem item;
        ASSERT_TRUE(item.Load(file));
        item.prgOffset = prg;
        item.chrOffset = chr;
        layout_.items.push_back(item);
    }
    std::string Expected() const {
        std::string rom(0x80000, '\xFF');
        const std::string menu = ImageBytes({8, 0, 4}, 1).substr(16);
        const std::string game = ImageBytes({4, 3, 4}, 2).substr(16);
        const std::string nrom = ImageBytes({2, 1, 0}, 3).substr(16);
        rom.replace(0x60000, 0x20000, menu);
        rom.replace(0, 0x10000, game, 0, 0x10000);
        rom.replace(0x10000, 0x10000, game, 0, 0x10000);
        rom.replace(0x40000, 0x6000, game, 0x10000, 0x6000);
        rom.replace(0x20000, 0x8000, nrom, 0, 0x8000);
        rom.replace(0x28000, 0x2000, nrom, 0x8000, 0x2000);
        return rom;
    }
    std::optional<FileProblem> Write(RomFormat format, const std::string& name = "out") {
        return WriteRom(layout_, BoardType::kCoolboy, format, folder_ / name);
    }

    TemporaryFolder folder_;
    LayoutResult layout_;
};

TEST_F(RomWriter, ComposesTheThreeForms) {
    const std::string rom = Expected();
    ASSERT_FALSE(Write(RomFormat::kBinary));
    EXPECT_TRUE(ReadText(folder_ / "out") == rom);
    ASSERT_FALSE(Write(RomFormat::kNes20));
    const std::string nes = ReadText(folder_ / "out");
    EXPECT_EQ(nes.substr(0, 4), "NES\x1A");
    EXPECT_TRUE(nes.substr(16) == rom);
    ASSERT_FALSE(Write(RomFormat::kUnif));
    const std::string unif = ReadText(folder_ / "out");
    ASSERT_EQ(unif.size(), 65 + rom.size());
    EXPECT_EQ(unif.substr(0, 4), "UNIF");
    EXPECT_TRUE(unif.substr(65) == rom);
}

TEST_F(RomWriter, FillsTheTailOfTheExponentForm) {
    layout_.romSize = 62898176 + 16384;
    ASSERT_FALSE(Write(RomFormat::kNes20));
    const std::string nes = ReadText(folder_ / "out");
    ASSERT_EQ(nes.size(), 67108880u);
    EXPECT_TRUE(nes.compare(16, 0x80000, Expected()) == 0);
    EXPECT_EQ(nes.find_first_not_of('\xFF', 16 + 0x80000), std::string::npos);
}

TEST_F(RomWriter, FailuresLeaveTheOldFile) {
    WriteText(folder_ / "out", "precious");
    const size_t files = folder_.CountFiles();
    {
        const FileSizeLimit fullDisk(0x30000);
        const auto problem = Write(RomFormat::kBinary);
        ASSERT_TRUE(problem);
        EXPECT_EQ(problem->file, folder_ / "out");
        EXPECT_FALSE(problem->reason.empty());
    }
    std::filesystem::remove(folder_ / "image3.nes");
    const auto problem = Write(RomFormat::kBinary);
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->file, folder_ / "image3.nes");
    const auto givenUp =
        WriteRom(layout_, BoardType::kCoolboy, RomFormat::kBinary, folder_ / "out",
                 [](size_t done, size_t, const MulticartItem&) { return done < 2; });
    EXPECT_TRUE(givenUp);
    EXPECT_TRUE(Write(RomFormat::kBinary, "no/such/folder"));
    EXPECT_EQ(ReadText(folder_ / "out"), "precious");
    EXPECT_EQ(folder_.CountFiles(), files - 1) << "temporary files are left";
}

TEST_F(RomWriter, AnImageThatShrankReadsAsFilling) {
    std::filesystem::resize_file(folder_ / "image3.nes", 16 + 0x4000);
    ASSERT_FALSE(Write(RomFormat::kBinary));
    std::string rom = Expected();
    rom.replace(0x24000, 0x4000, 0x4000, '\xFF');
    rom.replace(0x28000, 0x2000, 0x2000, '\xFF');
    EXPECT_TRUE(ReadText(folder_ / "out") == rom);
}

}  // namespace
}  // namespace bw
