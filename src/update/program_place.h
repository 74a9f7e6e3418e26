// What a replacement of the program does to files, in the system's own way.
#pragma once

#include <filesystem>

#include "support/file_problem.h"

namespace bw {

// Makes the fetched file one that can run as the program: a plain file of this user's, known by no
// other name, with the rights of the program's file and all its bytes on the disk.
FileResult<> MakeRunnable(const std::filesystem::path& fetched,
                          const std::filesystem::path& program);

// Gives the program the name `old`, too, which no file has (POSIX), or only that (Windows, where a
// program that runs can be renamed and not replaced).
FileResult<> KeepAs(const std::filesystem::path& old, const std::filesystem::path& program);
// Takes that back.
void DropKept(const std::filesystem::path& old, const std::filesystem::path& program);

// One rename.
FileResult<> PutInPlace(const std::filesystem::path& fetched, const std::filesystem::path& program);

}  // namespace bw
