// The designer's files as its buttons load and save them: the types that each dialog offers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "designer/files/design_parts.h"
#include "language/text_id.h"

namespace bw {

// An entry of a dialog's list of types.
struct PartType {
    std::u16string_view name;
    std::string_view extension;  // without its point
    DesignPart part;
};

// The first type is the usual one.
struct FileRow {
    int load;  // the commands' ids; 0 where there is none
    int save;
    std::span<const PartType> loadTypes;
    std::span<const PartType> saveTypes;
};

std::span<const FileRow> FileRows();
// Null if no row has the command.
const FileRow* RowOfLoad(int id);
const FileRow* RowOfSave(int id);

TextId PartName(DesignPart part);

// The largest file that is read for a part, in bytes: 16 MB for the chunk files, and for the bare
// tables, which take a few kilobytes of it, 1 MB: the tiles of a whole game.
uint64_t LargestFile(DesignPart part);

// The bytes of a table in full; 0 for the chunk files.
size_t TableSize(DesignPart part);

}  // namespace bw
