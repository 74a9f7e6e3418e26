// Rows whose files are gone, and finding them again.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <vector>

#include "list/list_editor.h"
#include "rom/image_crcs.h"

namespace bw {

std::vector<uint32_t> MissingRows(const GameList& games);

// Read anew from the found file; name, remark and check are those of the row.
using FoundGame = RowEntry;

// Looks in a folder, its folders and the archives among them. First by the file's name (letter case
// aside) and its size, where the list knows that; then by the sums, where the list knows them. A
// file with the name but other sums is not taken. Each file serves as many rows as want it.
std::vector<FoundGame> LookForMissing(const GameList& games, std::span<const uint32_t> rows,
                                      const std::filesystem::path& folder,
                                      const std::filesystem::path& base,
                                      const ReadingProgress& progress = {});

}  // namespace bw
