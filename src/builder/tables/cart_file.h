// A file that may hold the ROM of one of the boards: what its container tells, and the ROM's banks.
// Sources: NESdev wiki, NES 2.0 and UNIF.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>

#include "builder/input/rom_format.h"
#include "rom/board_tables.h"
#include "rom/image_files.h"
#include "support/files.h"

namespace bw {

inline constexpr uint32_t kCartBankSize = 8192;  // bytes
using CartBank = std::array<uint8_t, kCartBankSize>;

class CartFile {
  public:
    // kWrongKind for a NES 2.0 or UNIF file of another board, and for a damaged one.
    static FileResult<CartFile> Open(const std::filesystem::path& path);

    // Nothing for a bare ROM.
    std::optional<BoardType> Board() const { return board_; }
    RomFormat Format() const { return format_; }
    uint64_t RomStart() const { return romStart_; }  // offset in the file
    // As long as the container says, but no longer than the file: bytes.
    uint64_t RomBytes() const { return romBytes_; }

    // Bytes of the ROM from this offset on; the number that arrived, fewer where the ROM ends.
    FileResult<size_t> ReadRom(uint64_t offset, std::span<uint8_t> bytes) const;
    // The 8 KB at this offset of the ROM; nothing if they aren't all there.
    std::optional<CartBank> Bank(uint64_t offset) const;

  private:
    explicit CartFile(ImageFile file) : file_(std::move(file)) {}
    bool ReadContainer();
    bool ReadNes20(const std::array<uint8_t, 16>& header);
    bool ReadUnif();
    // All bytes, or false.
    bool Read(uint64_t offset, std::span<uint8_t> bytes) const;
    void SetRom(uint64_t start, uint64_t bytes);

    ImageFile file_;
    uint64_t fileBytes_ = 0;
    std::optional<BoardType> board_;
    RomFormat format_ = RomFormat::kBinary;
    uint64_t romStart_ = 0;
    uint64_t romBytes_ = 0;
};

// Whether the file says itself that it is for one of the boards: no game then.
bool IsForBoard(const std::filesystem::path& file);

}  // namespace bw
