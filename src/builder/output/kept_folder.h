// The folder in which a user keeps the files that a build makes for the menu. What lies there is
// the user's: only files that an earlier build has left, and nobody has changed, are replaced.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "support/file_problem.h"

namespace bw {

// Beside the files: a line of text for each, its CRC-32 in 8 hexadecimal digits, a blank, its path
// in the folder with '/' between folders.
inline constexpr std::string_view kKeptListName = "kept_files.txt";

// A file in the folder that no build has left there, or that was changed since; nothing if there
// is none, also where there is no folder yet. A folder that can't be read is a problem.
FileResult<std::optional<std::filesystem::path>> FindForeignFile(
    const std::filesystem::path& folder);

// Replaces what an earlier build has left in `folder` by a copy of all that lies in `from`. With a
// foreign file in it the folder stays as it is; the problem, which names that file, is
// std::errc::file_exists.
FileResult<> KeepFiles(const std::filesystem::path& from, const std::filesystem::path& folder);

}  // namespace bw
