#include "builder/output/rom_header.h"

#include <algorithm>

#include "rom/board_mapper.h"
#include "support/numbers.h"

namespace bw {
namespace {

constexpr uint32_t kPlainFormLimit = 62898176;  // bytes; 0xEFF units of 16 KB
constexpr uint32_t kUnifVersion = 5;
constexpr size_t kUnifHeaderSize = 32;
constexpr uint8_t kMirroringByMapper = 5;

void AppendLittleEndian(std::vector<uint8_t>& bytes, uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) {
        bytes.push_back(static_cast<uint8_t>(value >> shift));
    }
}

void AppendChunkHead(std::vector<uint8_t>& bytes, std::string_view name, uint32_t size) {
    bytes.insert(bytes.end(), name.begin(), name.end());
    AppendLittleEndian(bytes, size);
}

}  // namespace

std::string_view FormatExtension(RomFormat format) {
    switch (format) {
        case RomFormat::kUnif:
            return "unf";
        case RomFormat::kBinary:
            return "bin";
        default:
            return "nes";
    }
}

Nes20Header MakeNes20Header(uint32_t romSize, BoardType board) {
    const BoardMapper mapper = MapperOf(board);
    const bool coolgirl = board == BoardType::kCoolgirl;
    Nes20Header header;
    auto& bytes = header.bytes;
    const InesHeader magic;
    std::copy_n(magic.bytes.begin(), 4, bytes.begin());
    uint64_t dataSize = romSize;
    if (romSize <= kPlainFormLimit) {
        const uint32_t units = romSize / kPrgUnit;
        bytes[4] = static_cast<uint8_t>(units);
        bytes[9] = static_cast<uint8_t>(units >> 8 & 0x0F);
    } else {
        uint32_t exponent = 0;
        while ((uint64_t{1} << exponent) < romSize)
            ++exponent;
        dataSize = uint64_t{1} << exponent;
        bytes[4] = static_cast<uint8_t>(exponent * 4);
        bytes[9] = 0x0F;
    }
    bytes[6] = static_cast<uint8_t>((mapper.mapper & 0x0F) << 4 | (coolgirl ? 0x02 : 0));
    bytes[7] = static_cast<uint8_t>((mapper.mapper & 0xF0) | 0x08);
    bytes[8] = static_cast<uint8_t>((mapper.mapper >> 8 & 0x0F) | mapper.submapper << 4);
    bytes[10] = coolgirl ? 0x90 : 0x70;  // 32 KB and 8 KB of battery-backed PRG RAM
    bytes[11] = 12;                      // 256 KB of CHR RAM
    header.fileSize = kInesHeaderSize + dataSize;
    return header;
}

void UnifChunks::SetBoardName(std::string_view name) {
    std::vector<uint8_t> data(name.begin(), name.end());
    data.push_back(0);
    chunks_["MAPR"] = std::move(data);
}

void UnifChunks::SetMirroring(uint8_t value) {
    chunks_["MIRR"] = {value};
}

void UnifChunks::SetPrgSize(uint32_t number, uint32_t size) {
    if (number > 15 || size == 0) return;
    prgName_ = "PRG";
    AppendHex(prgName_, number, 1);
    prgSize_ = size;
}

std::vector<uint8_t> UnifChunks::Head() const {
    std::vector<uint8_t> bytes{'U', 'N', 'I', 'F'};
    AppendLittleEndian(bytes, kUnifVersion);
    bytes.resize(kUnifHeaderSize);
    for (const auto& [name, data] : chunks_) {
        AppendChunkHead(bytes, name, static_cast<uint32_t>(data.size()));
        bytes.insert(bytes.end(), data.begin(), data.end());
    }
    if (prgSize_ != 0) AppendChunkHead(bytes, prgName_, prgSize_);
    return bytes;
}

Container MakeContainer(RomFormat format, uint32_t romSize, BoardType board) {
    switch (format) {
        case RomFormat::kUnif: {
            UnifChunks chunks;
            chunks.SetBoardName(BoardName(board));
            chunks.SetMirroring(kMirroringByMapper);
            chunks.SetPrgSize(0, romSize);
            std::vector<uint8_t> head = chunks.Head();
            const uint64_t size = head.size() + uint64_t{romSize};
            return {std::move(head), size};
        }
        case RomFormat::kBinary:
            return {{}, romSize};
        default: {
            const Nes20Header header = MakeNes20Header(romSize, board);
            return {{header.bytes.begin(), header.bytes.end()}, header.fileSize};
        }
    }
}

}  // namespace bw
