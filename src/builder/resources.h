// The files that a build writes to its work folder before it runs the assembler: the assembler
// itself, the menu's sources and its data. They are part of the program, so a single file works
// wherever it is copied.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>

#include "support/file_problem.h"

namespace bw {

struct Resource {
    std::string_view path;  // below the work folder, '/' between folders
    std::string_view type;
    uint32_t number;
    std::span<const uint8_t> data;  // empty: this version of the program doesn't carry the row
};

// The twenty rows in their order of writing.
std::span<const Resource> ResourceTable();

// The default tile set: MENU_CHR number 122.
std::span<const uint8_t> DefaultTileSet();

// The assembler's path below the work folder.
std::filesystem::path AssemblerPath(const std::filesystem::path& workFolder);

// Writes every row that the program carries. At the first row that fails the work folder is
// removed and the problem comes back.
FileResult<> WriteResources(const std::filesystem::path& workFolder);

}  // namespace bw
