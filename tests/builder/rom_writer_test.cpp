#include "builder/output/rom_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "common/file_size_limit.h"
#include "common/game_image.h"
#include "common/temporary_folder.h"
#include "test_items.h"

namespace bw {
namespace {

using test::ImageBytes;
using test::Placed;
using test::ReadText;
using test::WriteText;
using std::literals::operator""s;

TEST(RomHeader, Nes20) {
    constexpr uint32_t kMegabyte = 1 << 20;
    constexpr uint32_t kPlainLimit = 62898176;
    const auto girl = BoardType::kCoolgirl;
    // bytes 4 to 11 of the header; data in the file
    const std::tuple<uint32_t, BoardType, std::array<uint8_t, 8>, uint64_t> rows[] = {
        {kMegabyte, BoardType::kCoolboy, {64, 0, 0xC0, 0x08, 0x01, 0, 0x70, 12}, kMegabyte},
        {kMegabyte, BoardType::kMindkids, {64, 0, 0xC0, 0x08, 0x11, 0, 0x70, 12}, kMegabyte},
        {kMegabyte, girl, {64, 0, 0x62, 0x58, 0x01, 0, 0x90, 12}, kMegabyte},
        {kPlainLimit, girl, {0xFF, 0, 0x62, 0x58, 0x01, 0x0E, 0x90, 12}, kPlainLimit},
        {kPlainLimit + 16384, girl, {104, 0, 0x62, 0x58, 0x01, 0x0F, 0x90, 12}, 64 * kMegabyte},
        {100 * kMegabyte, girl, {108, 0, 0x62, 0x58, 0x01, 0x0F, 0x90, 12}, 128 * kMegabyte},
        {128 * kMegabyte, girl, {108, 0, 0x62, 0x58, 0x01, 0x0F, 0x90, 12}, 128 * kMegabyte}};
    for (const auto& [romSize, board, bytes, dataSize] : rows) {
        const Nes20Header header = MakeNes20Header(romSize, board);
        EXPECT_THAT(std::span(header.bytes).subspan(4, 8), testing::ElementsAreArray(bytes));
        EXPECT_EQ(header.fileSize, 16 + dataSize);
    }
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
        layout_.items.push_back(Placed(item, prg, chr));
    }
    std::string Expected() const {
        std::string rom(0x80000, '\xFF');
        const std::string game = ImageBytes({4, 3, 4}, 2).substr(16);
        const std::string nrom = ImageBytes({2, 1, 0}, 3).substr(16);
        rom.replace(0x60000, 0x20000, ImageBytes({8, 0, 4}, 1), 16);
        rom.replace(0, 0x10000, game, 0, 0x10000);
        rom.replace(0x10000, 0x10000, game, 0, 0x10000);
        rom.replace(0x40000, 0x6000, game, 0x10000, 0x6000);
        rom.replace(0x20000, 0xA000, nrom);
        return rom;
    }
    std::optional<FileProblem> Write(RomFormat format, const std::string& name = "out") {
        const auto end = WriteRom(layout_, BoardType::kCoolboy, format, folder_ / name);
        return end ? std::nullopt : std::optional(end.Problem());
    }

    TemporaryFolder folder_;
    LayoutResult layout_;
};

TEST_F(RomWriter, ComposesTheThreeForms) {
    const std::string rom = Expected();
    const std::tuple<RomFormat, size_t, std::string> rows[] = {
        {RomFormat::kBinary, 0, ""},
        {RomFormat::kNes20, 16, "NES\x1A"},
        {RomFormat::kUnif, 65,
         "UNIF\x05\0\0\0"s + std::string(24, '\0') + "MAPR\x08\0\0\0COOLBOY\0"s +
             "MIRR\x01\0\0\0\x05"s + "PRG0\0\0\x08\0"s}};
    for (const auto& [format, headSize, mark] : rows) {
        ASSERT_FALSE(Write(format));
        const std::string written = ReadText(folder_ / "out");
        EXPECT_TRUE(written.starts_with(mark));
        EXPECT_TRUE(written.substr(headSize) == rom) << mark;
    }
    // An image that shrank reads as filling.
    std::filesystem::resize_file(folder_ / "image3.nes", 16 + 0x4000);
    ASSERT_FALSE(Write(RomFormat::kBinary));
    std::string shrunk = rom;
    shrunk.replace(0x24000, 0x6000, 0x6000, '\xFF');
    EXPECT_TRUE(ReadText(folder_ / "out") == shrunk);
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
        EXPECT_THAT(problem->kind,
                    testing::AnyOf(FileProblem::Kind::kTooLarge, FileProblem::Kind::kDiskFull));
    }
    std::filesystem::remove(folder_ / "image3.nes");
    const auto problem = Write(RomFormat::kBinary);
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->file, folder_ / "image3.nes");
    const auto givenUp =
        WriteRom(layout_, BoardType::kCoolboy, RomFormat::kBinary, folder_ / "out",
                 [](size_t done, size_t, const MulticartItem&) { return done < 1; });
    ASSERT_TRUE(givenUp);
    EXPECT_EQ(*givenUp, RomEnd::kStopped);
    EXPECT_TRUE(Write(RomFormat::kBinary, "no/such/folder"));
    EXPECT_EQ(ReadText(folder_ / "out"), "precious");
    EXPECT_EQ(folder_.CountFiles(), files - 1) << "temporary files are left";
}

}  // namespace
}  // namespace bw
