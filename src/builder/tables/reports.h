// The two text files that tell a person what a build put where.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "rom/multicart_item.h"
#include "support/file_problem.h"

namespace bw {

// game_prg_chr_offset.txt: the games by PRG offset, then by CHR offset, one byte per character.
FileResult<> WriteOffsetReport(const std::vector<const MulticartItem*>& games,
                               const std::filesystem::path& folder);

// game_list.txt: the display names, one a line, in UTF-8.
FileResult<> WriteNameReport(std::span<const std::u16string> names,
                             const std::filesystem::path& folder);

}  // namespace bw
