// What a folder of games may hold beside files and folders.
#pragma once

#include <chrono>
#include <filesystem>
#include <vector>

namespace bw::test {

// Names of devices, and on POSIX a named pipe in the folder: opened and read like a file, they
// would give bytes without end, or none ever.
std::vector<std::filesystem::path> SpecialFiles(const std::filesystem::path& folder);

// A file or a folder that nobody has changed for so long.
void MakeOlder(const std::filesystem::path& path, std::chrono::hours age);

}  // namespace bw::test
