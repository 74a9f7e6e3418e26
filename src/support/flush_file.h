// What has to be on the disk, not in the system's memory alone, before the next step.
#pragma once

#include <filesystem>

#include "support/file_problem.h"

namespace bw {

// Returns when the disk has what was written to the file so far. The file may be open elsewhere.
FileResult<> FlushFile(const std::filesystem::path& path);

}  // namespace bw
