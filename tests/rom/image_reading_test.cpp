#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "common/image_folder.h"
#include "common/special_files.h"
#include "list/game_entry.h"
#include "rom/crc32.h"
#include "rom/multicart_item.h"

namespace bw {
namespace {

using test::Header;
using test::ImageBytes;
using test::ImageFolder;

// Bit by bit, as the polynomial division reads.
uint32_t SlowCrc(std::string_view bytes) {
    uint32_t crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<uint8_t>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ ((crc & 1) != 0 ? 0xEDB88320 : 0);
    }
    return ~crc;
}

std::string Data(size_t size, uint32_t seed) {
    return ImageBytes({.prg = 16}, seed).substr(16, size);
}

std::string Ones(size_t size) {
    return std::string(size, '\xFF');
}

TEST(Crc32, IsThePublishedOneAndContinues) {
    const std::string text = "123456789";
    const std::span bytes(reinterpret_cast<const uint8_t*>(text.data()), text.size());
    EXPECT_EQ(Crc32(bytes), 0xCBF43926u);
    EXPECT_EQ(Crc32(bytes.subspan(4), Crc32(bytes.first(4))), 0xCBF43926u);
    EXPECT_EQ(Crc32({}), 0u);
    EXPECT_EQ(Crc32({}, 0xCBF43926u), 0xCBF43926u);
}

TEST(GameEntry, TellsHowMuchOfTheHeaderArrived) {
    const ImageFolder folder;
    const struct {
        const char* name;
        std::string bytes;
        bool headerRead, valid;
        uint32_t prg;
    } cases[] = {{"whole.nes", Header({2, 1}) + Data(100, 1), true, true, 2},
                 {"header only.nes", Header({2, 1}), true, true, 2},
                 {"no prg.nes", Header({0, 1}), true, false, 0},
                 {"nes20.nes", Header({2, 1, 0, 8, 0, 0x11}), true, true, 0x102},
                 {"15 bytes.nes", Header({2, 1}).substr(0, 15), false, true, 2},
                 {"magic only.nes", "NES\x1A", false, false, 0},
                 {"empty.nes", "", false, false, 0},
                 {"unif.nes", "UNIF" + std::string(40, '\1'), true, false, 1}};
    for (const auto& c : cases) {
        const GameEntry entry(folder.Write(c.name, c.bytes));
        EXPECT_EQ(entry.headerRead, c.headerRead) << c.name;
        EXPECT_EQ(entry.HasValidHeader(), c.valid) << c.name;
        EXPECT_EQ(entry.header.PrgCount(), c.prg) << c.name;
        EXPECT_EQ(entry.coolgirlSupported, c.valid && c.prg <= 2) << c.name;
        EXPECT_EQ(entry.coolboySupported, entry.coolgirlSupported) << c.name;
        EXPECT_FALSE(entry.checked);
    }
    const GameEntry missing(folder / "missing.nes");
    EXPECT_FALSE(missing.headerRead || missing.HasValidHeader() || missing.coolboySupported);
    EXPECT_TRUE(missing.header.HasMagic());
    EXPECT_EQ(missing.name, u"missing");
}

TEST(MulticartItem, SizesAndCrcOfWholeAndTruncatedImages) {
    const ImageFolder folder;
    const std::string prg = Data(32768, 1);
    const std::string chr = Data(8192, 2);
    const std::string longPrg = Data(200000, 3);
    const struct {
        const char* name;
        std::string bytes;
        uint32_t prgCount, chrCount;
        std::string prg, chr;  // as they count
    } cases[] = {
        {"whole", Header({2, 1}) + prg + chr, 2, 1, prg, chr},
        {"longer than announced", Header({2, 1}) + prg + chr + "tail", 2, 1, prg, chr},
        {"trainer", Header({2, 1, 4}) + Data(512, 9) + prg + chr, 2, 1, prg, chr},
        {"no CHR", Header({2, 0}) + prg, 2, 0, prg, ""},
        {"header only", Header({2, 1}), 2, 1, Ones(32768), Ones(8192)},
        {"ends in CHR", Header({2, 1}) + prg + chr.substr(0, 5), 2, 1, prg,
         chr.substr(0, 5) + Ones(8187)},
        {"ends in a long PRG", Header({16, 1}) + longPrg, 16, 1, longPrg + Ones(62144), Ones(8192)},
        {"byte 9 doesn't count", Header({2, 1, 0, 8, 0, 0x11}) + prg + chr, 2, 1, prg, chr},
        {"short header", Header({2, 1}).substr(0, 5), 2, 0, Ones(32768), ""},
        {"magic only", "NES\x1A", 0, 0, "", ""},
        // What doesn't arrive keeps its preset, the magic included.
        {"empty", "", 0, 0, "", ""}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        MulticartItem item;
        ASSERT_TRUE(item.Load(folder.Write(c.name, c.bytes)));
        EXPECT_EQ(item.valid, 1);
        EXPECT_EQ(item.headerSize, 16u);
        EXPECT_EQ(item.prgCount, c.prgCount);
        EXPECT_EQ(item.prgUnits, c.prgCount);
        EXPECT_EQ(item.prgBytes, c.prg.size());
        EXPECT_EQ(item.prgSpan, c.prg.size());
        EXPECT_EQ(item.chrCount, c.chrCount);
        EXPECT_EQ(item.chrUnits, c.chrCount);
        EXPECT_EQ(item.chrBytes, c.chr.size());
        EXPECT_EQ(item.chrSpan, c.chr.size());
        EXPECT_EQ(item.prgCrc, SlowCrc(c.prg));
        EXPECT_EQ(item.chrCrc, SlowCrc(c.chr));
        EXPECT_EQ(item.fileSize, c.bytes.size());
    }
}

TEST(MulticartItem, FlagsComeFromTheirBits) {
    const ImageFolder folder;
    for (int bit = 0; bit < 4; ++bit) {
        MulticartItem item;
        ASSERT_TRUE(item.Load(folder.Write("a.b.nes", Header({1, 0, 0xA0 | 1 << bit, 0x48, 3}))));
        EXPECT_EQ(item.mirroring, bit == 0);
        EXPECT_EQ(item.battery, bit == 1);
        EXPECT_EQ(item.trainer, bit == 2);
        EXPECT_EQ(item.trainerSize, bit == 2 ? 512u : 0u);
        EXPECT_EQ(item.fourScreen, bit == 3);
        EXPECT_EQ(item.mapper, 0x34Au);
        EXPECT_EQ(item.name, u"a.b");
    }
}

TEST(MulticartItem, AFailedLoadChangesThePathOnly) {
    const ImageFolder folder;
    MulticartItem menu;
    menu.isMenu = 1;
    menu.name = u"menu";
    menu.SetPrgCount(8);
    menu.SetPrgUnits(16);
    std::vector<std::filesystem::path> paths = test::SpecialFiles(folder.Path());
    paths.insert(paths.end(), {folder / "missing", folder.Write("unif", "UNIF" + Data(100, 1)),
                               folder.Write("short", "NEX"), folder.Path()});
    for (const auto& path : paths) {
        SCOPED_TRACE(path);
        EXPECT_FALSE(menu.Load(path));
        EXPECT_EQ(menu.path, path);
        EXPECT_EQ(menu.valid, 0);
        EXPECT_EQ(menu.name, u"menu");
        EXPECT_EQ(menu.prgBytes, 8u * 16384);
        EXPECT_EQ(menu.prgSpan, 16u * 16384);
        EXPECT_EQ(menu.headerSize, 0u);
        EXPECT_EQ(GameEntry(path).headerRead, path.filename() == "unif");
    }
    // A later success writes the sizes and leaves what the image says nothing of.
    EXPECT_TRUE(menu.Load(folder.Write("menu.nes", Header({2, 1}))));
    EXPECT_EQ(menu.isMenu, 1);
    EXPECT_EQ(menu.prgSpan, 2u * 16384);
}

TEST(LoadMulticartItems, KeepsTheOrderAndMarksWhatFailed) {
    const ImageFolder folder;
    std::vector<std::filesystem::path> paths;
    for (int i = 0; i < 50; ++i) {
        const std::string name = std::to_string(i);
        paths.push_back(i % 10 == 3 ? folder / name
                                    : folder.Write(name, Header({1 + i % 3}) + Data(50000, 7)));
    }
    const std::vector<MulticartItem> items = LoadMulticartItems(paths);
    ASSERT_EQ(items.size(), paths.size());
    for (size_t i = 0; i < items.size(); ++i) {
        SCOPED_TRACE(i);
        MulticartItem alone;
        EXPECT_EQ(alone.Load(paths[i]), items[i].valid == 1);
        EXPECT_EQ(items[i].path, paths[i]);
        EXPECT_EQ(items[i].prgCount, alone.prgCount);
        EXPECT_EQ(items[i].prgCrc, alone.prgCrc);
        EXPECT_EQ(items[i].valid, i % 10 != 3);
    }
}

}  // namespace
}  // namespace bw
