#pragma once

#include <string>
#include <vector>

#include "assembler/pass.h"

namespace bw::assembler {

// The listing: per assembled line its number, bank, address, bytes and text. A line with the file's
// name stands wherever the file changes. Lines of macros are marked with a plus.
std::string RenderListing(const std::vector<ListedLine>& lines, const SourceFiles& files,
                          Image& image, const Names& names);

// The symbol file: per global name "$VALUE BANK NAME", sorted by name; "-" as bank of a constant.
std::string RenderSymbols(const Names& names);

}  // namespace bw::assembler
