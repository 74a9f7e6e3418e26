#include "rom/board_tables.h"

#include <set>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "language/language.h"
#include "support/text.h"

namespace bw {
namespace {

using testing::ElementsAre;

// The mappers that the help text promises for COOLGIRL, without its remarks on single games.
std::set<uint32_t> MappersOfHelpText() {
    const std::string text = ToUtf8(LoadText(TextId::kSupportedMappers, Language::kEnglish));
    std::set<uint32_t> mappers;
    int depth = 0;
    uint32_t number = 0;
    bool inNumber = false;
    for (const char c : text.substr(text.find("COOLGIRL ROM:")) + " ") {
        depth += c == '(' ? 1 : 0;
        depth -= c == ')' ? 1 : 0;
        if (c >= '0' && c <= '9' && depth == 0) {
            number = number * 10 + static_cast<uint32_t>(c - '0');
            inNumber = true;
        } else if (inNumber) {
            mappers.insert(number);
            number = 0;
            inNumber = false;
        }
    }
    return mappers;
}

TEST(BoardTables, HoldTheMappersThatTheHelpTextNames) {
    const std::set<uint32_t> named = MappersOfHelpText();
    ASSERT_EQ(named.size(), 51u);
    for (uint32_t mapper = 0; mapper < 4096; ++mapper) {
        SCOPED_TRACE(mapper);
        const bool known = named.contains(mapper);
        EXPECT_EQ(FindMapperCapability(mapper) != nullptr, known);
        EXPECT_EQ(FindCoolgirlMapperConfig(mapper) != nullptr, known && mapper != 74);
        EXPECT_EQ(BoardTakesMapper(BoardType::kCoolgirl, mapper), known);
        const bool simple = mapper == 0 || mapper == 4 || mapper == 74;
        EXPECT_EQ(BoardTakesMapper(BoardType::kCoolboy, mapper), simple);
        EXPECT_EQ(BoardTakesMapper(BoardType::kMindkids, mapper), simple);
    }
}

TEST(BoardTables, KeepSizesInTheUnitsAndTheOddRows) {
    EXPECT_THAT(FindMapperCapability(0)->prgSizes, ElementsAre(1, 2));
    EXPECT_THAT(FindMapperCapability(4)->chrSizes, ElementsAre(0, 1, 2, 4, 8, 16, 32, 64));
    EXPECT_THAT(FindMapperCapability(228)->prgSizes, ElementsAre(1, 2, 4, 8, 16, 32, 64, 96, 128));
    EXPECT_THAT(FindMapperCapability(184)->prgSizes, ElementsAre(1, 2));
    EXPECT_EQ(FindMapperCapability(184)->mapper, 189u);
    EXPECT_EQ(FindMapperCapability(189)->mapper, 189u);
    EXPECT_THAT(FindMapperCapability(189)->prgSizes, ElementsAre(1, 2, 4, 8, 16, 32));
}

InesHeader MakeHeader(const std::array<int, 6>& bytes) {
    InesHeader header;
    for (size_t i = 0; i < bytes.size(); ++i)
        header.bytes[4 + i] = static_cast<uint8_t>(bytes[i]);
    return header;
}

TEST(BoardTables, WhatTheListShows) {
    const struct {
        const char* what;
        std::array<int, 6> bytes;  // header bytes 4 to 9
        bool coolboy, coolgirl;
    } cases[] = {{"mapper 0, 32 KB, 8 KB CHR", {2, 1, 0, 0, 0, 0}, true, true},
                 {"mapper 0, 48 KB: no power of two", {3, 1, 0, 0, 0, 0}, false, false},
                 {"mapper 0, 16 KB CHR: only COOLBOY looks", {2, 2, 0, 0, 0, 0}, false, true},
                 {"mapper 1", {8, 0, 0x10, 0, 0, 0}, false, true},
                 {"mapper 4, 2 MB", {128, 32, 0x40, 0, 0, 0}, true, true},
                 {"mapper 4, 1 MB CHR: CHR isn't looked at", {64, 128, 0x40, 0, 0, 0}, true, true},
                 {"mapper 4, 48 KB", {3, 0, 0x40, 0, 0, 0}, false, false},
                 {"mapper 74", {16, 16, 0xA0, 0x40, 0, 0}, true, true},
                 {"mapper 74, PRG sizes as mapper 4", {128, 16, 0xA0, 0x40, 0, 0}, true, true},
                 {"mapper 5 without CHR ROM", {8, 0, 0x50, 0, 0, 0}, false, true},
                 {"mapper 184", {2, 4, 0x80, 0xB0, 0, 0}, false, true},
                 {"mapper 228, 1.5 MB", {96, 64, 0x40, 0xE0, 0, 0}, false, true},
                 {"mapper 228, 768 KB", {48, 64, 0x40, 0xE0, 0, 0}, false, false},
                 {"mapper 6 is unknown", {2, 1, 0x60, 0, 0, 0}, false, false},
                 {"PRG size 0", {0, 1, 0, 0, 0, 0}, false, false},
                 {"NES 2.0 with mapper 256", {2, 1, 0, 0x08, 1, 0}, false, false},
                 {"NES 2.0 with 4 MB + 32 KB PRG", {2, 1, 0x40, 0x08, 0, 1}, false, false},
                 {"NES 2.0 with a low PRG size of 0", {0, 1, 0x40, 0x08, 0, 1}, false, false}};
    for (const auto& c : cases) {
        EXPECT_EQ(CoolboySupported(MakeHeader(c.bytes)), c.coolboy) << c.what;
        EXPECT_EQ(CoolgirlSupported(MakeHeader(c.bytes)), c.coolgirl) << c.what;
    }
    InesHeader foreign = MakeHeader({2, 1, 0, 0, 0, 0});
    foreign.bytes[3] = 0;
    EXPECT_FALSE(CoolboySupported(foreign) || CoolgirlSupported(foreign));
}

TEST(InesHeader, SizesAndMapperByItsVersion) {
    const struct {
        const char* what;
        std::array<int, 6> bytes;  // header bytes 4 to 9
        bool nes20;
        uint32_t prg, chr, mapper;
    } cases[] = {
        {"plain", {8, 16, 0x41, 0x20, 0, 0}, false, 8, 16, 0x24},
        {"iNES ignores bytes 8 and 9", {8, 16, 0x41, 0x20, 0xFF, 0xFF}, false, 8, 16, 0x24},
        {"NES 2.0", {8, 16, 0x41, 0x28, 0xF3, 0x21}, true, 0x108, 0x210, 0x324},
        {"NES 2.0, largest", {255, 255, 0xF0, 0xF8, 0x0F, 0xFF}, true, 4095, 4095, 4095},
        {"archaic", {8, 16, 0x41, 0x24, 0xF3, 0x21}, false, 8, 16, 0x24},
        {"both bits", {8, 16, 0x41, 0x2C, 0xF3, 0x21}, false, 8, 16, 0x24}};
    for (const auto& c : cases) {
        const InesHeader header = MakeHeader(c.bytes);
        EXPECT_EQ(header.IsNes20(), c.nes20) << c.what;
        EXPECT_EQ(header.PrgCount(), c.prg) << c.what;
        EXPECT_EQ(header.ChrCount(), c.chr) << c.what;
        EXPECT_EQ(header.Mapper(), c.mapper) << c.what;
    }
    for (int bit = 0; bit < 4; ++bit) {
        const InesHeader header = MakeHeader({1, 1, 1 << bit, 0, 0, 0});
        EXPECT_EQ(header.Vertical(), bit == 0);
        EXPECT_EQ(header.Battery(), bit == 1);
        EXPECT_EQ(header.Trainer(), bit == 2);
        EXPECT_EQ(header.FourScreen(), bit == 3);
    }
}

}  // namespace
}  // namespace bw
