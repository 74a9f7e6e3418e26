#include "rom/board_tables.h"

#include <array>
#include <bit>
#include <map>

namespace bw {
namespace {

// One mapper of the COOLGIRL board. PRG sizes are 1, 2, 4, ... up to prgMax, in 16 KB units; CHR
// sizes are 0, 1, 2, 4, ... up to chrMax, in 8 KB units.
struct Row {
    uint8_t mapper;
    uint8_t prgMax;
    uint8_t chrMax;
    uint8_t code;
    uint8_t flags;
    uint8_t prgMode;
    uint8_t chrMode;
};

// Mapper 74 has no setting of its own on the board: that of mapper 4 serves, with CHR RAM on.
constexpr uint8_t kMapperWithoutConfig = 74;

constexpr std::array kRows = {
    Row{0, 2, 1, 0, 0, 0, 0},
    Row{1, 32, 32, 16, 0, 0, 0},
    Row{2, 32, 0, 1, 0, 0, 0},
    Row{3, 2, 16, 2, 0, 0, 0},
    Row{4, 128, 64, 20, 0, 4, 2},
    Row{5, 64, 32, 15, 0, 4, 7},
    Row{7, 32, 0, 8, 0, 7, 0},
    Row{9, 8, 16, 17, 0, 4, 5},
    Row{10, 16, 16, 17, 1, 0, 5},
    Row{11, 8, 16, 10, 0, 7, 0},
    Row{18, 32, 32, 7, 0, 4, 7},
    Row{21, 16, 64, 24, 0, 4, 7},
    Row{22, 16, 64, 24, 3, 4, 7},
    Row{23, 16, 64, 24, 4, 4, 7},
    Row{25, 16, 64, 24, 5, 4, 7},
    Row{30, 32, 4, 1, 0, 0, 0},
    Row{32, 32, 32, 26, 0, 4, 7},
    Row{33, 32, 32, 22, 0, 4, 2},
    Row{34, 8, 0, 8, 1, 7, 0},
    Row{36, 8, 16, 29, 0, 7, 0},
    Row{38, 8, 4, 32, 0, 7, 0},
    Row{42, 8, 16, 23, 0, 7, 0},
    Row{48, 32, 32, 22, 1, 4, 2},
    Row{65, 32, 32, 14, 0, 4, 7},
    Row{66, 32, 16, 11, 0, 7, 0},
    Row{67, 16, 16, 36, 0, 0, 6},
    Row{69, 128, 32, 25, 0, 4, 7},
    Row{70, 8, 16, 18, 0, 0, 0},
    Row{71, 16, 0, 1, 1, 0, 0},
    Row{73, 8, 0, 19, 0, 0, 0},
    Row{kMapperWithoutConfig, 128, 32, 0, 0, 0, 0},
    Row{75, 8, 16, 34, 0, 4, 4},
    Row{78, 8, 16, 3, 0, 0, 0},
    Row{79, 4, 8, 27, 0, 7, 0},
    Row{83, 8, 32, 35, 0, 4, 7},
    Row{87, 2, 2, 12, 0, 0, 0},
    Row{89, 8, 16, 37, 0, 0, 0},
    Row{90, 16, 32, 13, 0, 4, 7},
    Row{93, 16, 32, 5, 0, 0, 0},
    Row{97, 16, 32, 4, 0, 1, 0},
    Row{112, 8, 32, 21, 0, 4, 2},
    Row{118, 32, 32, 20, 1, 4, 2},
    Row{133, 4, 4, 28, 0, 7, 0},
    Row{146, 4, 8, 27, 0, 7, 0},
    Row{152, 8, 16, 18, 0, 0, 0},
    Row{163, 128, 0, 6, 0, 7, 0},
    Row{184, 2, 32, 31, 0, 0, 4},
    Row{189, 32, 32, 20, 2, 7, 2},
    Row{206, 8, 8, 20, 4, 4, 2},
    Row{228, 128, 64, 9, 0, 7, 0},
    Row{241, 128, 4, 8, 1, 7, 0},
};

using Capabilities = std::map<uint32_t, MapperCapability>;
using Configs = std::map<uint32_t, CoolgirlMapperConfig>;

Capabilities MakeCapabilities() {
    Capabilities rows;
    for (const Row& row : kRows) {
        MapperCapability& out = rows[row.mapper];
        out.key = row.mapper;
        out.mapper = row.mapper;
        for (uint32_t size = 1; size <= row.prgMax; size *= 2)
            out.prgSizes.insert(size);
        out.chrSizes.insert(0);
        for (uint32_t size = 1; size <= row.chrMax; size *= 2)
            out.chrSizes.insert(size);
    }
    // Meant: the row of 184 carries another number, and lookups go by the key alone.
    rows.at(184).mapper = 189;
    // No game of mapper 5 has CHR RAM; the one game of mapper 228 has 96 units of PRG.
    rows.at(5).chrSizes.erase(0);
    rows.at(228).prgSizes.insert(96);
    return rows;
}

Configs MakeConfigs() {
    Configs rows;
    for (const Row& row : kRows) {
        if (row.mapper == kMapperWithoutConfig) continue;
        rows[row.mapper] = {row.mapper, 0, row.code, row.flags, row.prgMode, row.chrMode};
    }
    return rows;
}

const Capabilities& AllCapabilities() {
    static const Capabilities rows = MakeCapabilities();
    return rows;
}

}  // namespace

const char* BoardName(BoardType board) {
    switch (board) {
        case BoardType::kCoolboy:
            return "COOLBOY";
        case BoardType::kMindkids:
            return "MINDKIDS";
        case BoardType::kCoolgirl:
            return "COOLGIRL";
    }
    return "";
}

const MapperCapability* FindMapperCapability(uint32_t mapper) {
    const auto row = AllCapabilities().find(mapper);
    return row == AllCapabilities().end() ? nullptr : &row->second;
}

const CoolgirlMapperConfig* FindCoolgirlMapperConfig(uint32_t mapper) {
    static const Configs rows = MakeConfigs();
    const auto row = rows.find(mapper);
    return row == rows.end() ? nullptr : &row->second;
}

bool BoardTakesMapper(BoardType board, uint32_t mapper) {
    if (board == BoardType::kCoolgirl) return FindMapperCapability(mapper) != nullptr;
    return mapper == 0 || mapper == 4 || mapper == 74;
}

bool CoolboySupported(const InesHeader& header) {
    if (!header.IsValid()) return false;
    const uint32_t prg = header.PrgCount();
    switch (header.Mapper()) {
        case 0:
            return prg <= 2 && header.ChrCount() < 2;
        // Any power of two up to 2 MB; the CHR size isn't looked at.
        case 4:
        case 74:
            return std::has_single_bit(prg) && prg <= 128;
        default:
            return false;
    }
}

bool CoolgirlSupported(const InesHeader& header) {
    if (!header.IsValid()) return false;
    const MapperCapability* row = FindMapperCapability(header.Mapper());
    return row != nullptr && row->prgSizes.contains(header.PrgCount());
}

}  // namespace bw
