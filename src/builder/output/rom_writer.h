// Joins the games and the menu to the finished ROM and writes it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

#include "builder/layout/bank_layout.h"
#include "builder/output/rom_header.h"
#include "support/file_problem.h"
#include "support/files.h"

namespace bw {

// Called before each item is copied: number of items done, number in all, the item. False stops
// the writing: the target stays as it was.
using RomProgress = std::function<bool(size_t, size_t, const MulticartItem&)>;

// Called with the ROM's file when all is written and before it takes its name: where the ROM starts
// in it, and how many bytes it has.
using RomFinish = std::function<FileResult<>(File&, uint64_t, uint64_t)>;

enum class RomEnd : uint8_t { kWritten, kStopped };

// Reads every item's data a second time and writes the ROM in one of its forms. The target is
// replaced in one step at the end; a problem leaves it as it was. Gaps of the layout and the tail
// of a lengthened file are 0xFF. The ROM is never held in memory: data passes through one buffer,
// and of an archive's games a few at a time are unpacked, each archive once.
FileResult<RomEnd> WriteRom(const LayoutResult& layout, BoardType board, RomFormat format,
                            const std::filesystem::path& target, const RomProgress& progress = {},
                            const RomFinish& finish = {});

// The path with the format's extension appended, unless it ends in it already in any letter case.
std::filesystem::path WithFormatExtension(const std::filesystem::path& path, RomFormat format);

}  // namespace bw
