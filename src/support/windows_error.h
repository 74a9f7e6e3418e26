// What the calls of Windows say of files, in the words of the standard library where it has some.
#pragma once

#include <filesystem>
#include <system_error>

#include "support/file_problem.h"
#include "support/windows_api.h"

namespace bw {

// Of the call about `path` that has just failed.
FileProblem LastFileProblem(const std::filesystem::path& path);
FileProblem FileProblemOf(const std::filesystem::path& path, DWORD error);

}  // namespace bw
