#include "builder/tables/cart_file.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "rom/board_mapper.h"
#include "rom/ines_header.h"

namespace bw {
namespace {

constexpr std::array kBoards{BoardType::kCoolboy, BoardType::kMindkids, BoardType::kCoolgirl};
constexpr size_t kUnifHeaderSize = 32;
constexpr size_t kUnifChunks = 256;     // more of them aren't looked at
constexpr uint32_t kLongestName = 256;  // of a board, the final 0 included

std::string_view TextOf(std::span<const uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// Bytes of PRG that a NES 2.0 header tells of: units, or exponent and multiplier.
uint64_t PrgBytes(const std::array<uint8_t, kInesHeaderSize>& header) {
    const uint32_t high = header[9] & 0x0F;
    if (high != 0x0F) return uint64_t{high << 8 | header[4]} * kPrgUnit;
    const uint32_t exponent = header[4] >> 2;
    return exponent > 32 ? 0 : (uint64_t{1} << exponent) * ((header[4] & 3u) * 2 + 1);
}

std::optional<BoardType> BoardOf(BoardMapper mapper) {
    for (const BoardType board : kBoards) {
        if (MapperOf(board) == mapper) return board;
    }
    return std::nullopt;
}

std::optional<BoardType> BoardOf(std::string_view name) {
    for (const BoardType board : kBoards) {
        if (name == BoardName(board)) return board;
    }
    return std::nullopt;
}

}  // namespace

FileResult<CartFile> CartFile::Open(const std::filesystem::path& path) {
    FileResult<ImageFile> file = OpenImage(path);
    if (!file) return file.Problem();
    CartFile cart(std::move(*file));
    const FileResult<uint64_t> size = cart.file_.Size();
    if (!size) return size.Problem();
    cart.fileBytes_ = *size;
    if (!cart.ReadContainer()) return FileProblem{path, FileProblem::Kind::kWrongKind};
    return cart;
}

bool CartFile::ReadContainer() {
    std::array<uint8_t, kInesHeaderSize> start{};
    if (!Read(0, start)) return false;
    if (TextOf(start).starts_with("NES\x1A")) return ReadNes20(start);
    if (TextOf(start).starts_with("UNIF")) return ReadUnif();
    SetRom(0, fileBytes_);
    return true;
}

bool CartFile::ReadNes20(const std::array<uint8_t, 16>& header) {
    const InesHeader reading{header};
    if (!reading.IsNes20()) return false;
    format_ = RomFormat::kNes20;
    board_ = BoardOf({reading.Mapper(), static_cast<uint8_t>(header[8] >> 4)});
    SetRom(kInesHeaderSize + (reading.Trainer() ? kTrainerSize : 0), PrgBytes(header));
    return board_.has_value();
}

// The chunks may stand in any order. A ROM in several PRG chunks is none of ours.
bool CartFile::ReadUnif() {
    format_ = RomFormat::kUnif;
    uint64_t at = kUnifHeaderSize;
    std::array<uint8_t, 8> head{};
    for (size_t chunk = 0; chunk < kUnifChunks && Read(at, head); ++chunk) {
        const std::string_view name = TextOf(head).substr(0, 4);
        const uint32_t size =
            head[4] | uint32_t{head[5]} << 8 | uint32_t{head[6]} << 16 | uint32_t{head[7]} << 24;
        at += head.size();
        if (name == "PRG0") {
            SetRom(at, size);
        } else if (name.starts_with("PRG")) {
            return false;
        } else if (name == "MAPR") {
            std::array<uint8_t, kLongestName> text{};
            if (size > text.size() || !Read(at, std::span(text).first(size))) return false;
            const std::string_view whole = TextOf(std::span(text).first(size));
            board_ = BoardOf(whole.substr(0, whole.find('\0')));
        }
        at += size;
    }
    return board_ && romBytes_ != 0;
}

FileResult<size_t> CartFile::ReadRom(uint64_t offset, std::span<uint8_t> bytes) const {
    const uint64_t there = romBytes_ - std::min(offset, romBytes_);
    return file_.ReadAt(romStart_ + offset,
                        bytes.first(static_cast<size_t>(std::min<uint64_t>(bytes.size(), there))));
}

std::optional<CartBank> CartFile::Bank(uint64_t offset) const {
    CartBank bank;
    if (romBytes_ < kCartBankSize || offset > romBytes_ - kCartBankSize) return std::nullopt;
    if (!Read(romStart_ + offset, bank)) return std::nullopt;
    return bank;
}

bool CartFile::Read(uint64_t offset, std::span<uint8_t> bytes) const {
    return file_.ReadAt(offset, bytes).ValueOr(0) == bytes.size();
}

void CartFile::SetRom(uint64_t start, uint64_t bytes) {
    romStart_ = start;
    romBytes_ = start < fileBytes_ ? std::min(bytes, fileBytes_ - start) : 0;
}

bool IsForBoard(const std::filesystem::path& file) {
    const FileResult<CartFile> cart = CartFile::Open(file);
    return cart && cart->Board();
}

}  // namespace bw
