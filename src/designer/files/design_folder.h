// A design as a folder of files that people and version control can read: design.txt and two
// pictures of the tiles.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "designer/files/design_file.h"

namespace bw {

// The bytes of the design's file. A problem names the file of the folder, the line in design.txt,
// and what is wrong; `bytes` then stays as it was.
DesignProblem PackDesign(const std::filesystem::path& folder, std::vector<uint8_t>& bytes,
                         Language language);

// The opposite: takes a design's file apart. Makes the folder if it isn't there and replaces the
// files in it, none before all are written.
DesignProblem UnpackDesign(const std::filesystem::path& file, const std::filesystem::path& folder,
                           Language language);

}  // namespace bw
