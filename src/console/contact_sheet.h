// The pictures of a check on one sheet: number, name, picture, a mark on what was found.
#pragma once

#include <filesystem>
#include <span>

#include "console/findings.h"
#include "support/file_problem.h"

namespace bw {

// Writes a PNG file, replacing one that is there in one step. Letters are the menu's own tiles;
// other characters than ASCII show as question marks. Games without a picture have an empty place.
FileResult<> WriteContactSheet(std::span<const CheckedGame> games,
                               const std::filesystem::path& file);

// The same for one picture, 1 to 4 pixels for one of the console.
FileResult<> WritePicture(const ConsolePicture& picture, uint32_t scale,
                          const std::filesystem::path& file);

}  // namespace bw
