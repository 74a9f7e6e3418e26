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

// Gives the program its name back that was killed between KeepAs and PutInPlace. True if that was so.
bool PutBack(const std::filesystem::path& old);

// One rename. On Windows the program has no name between KeepAs and this: a kill in that moment leaves
// the old program under `old` and the new one under the name that it was fetched by, both whole.
FileResult<> PutInPlace(const std::filesystem::path& fetched, const std::filesystem::path& program);

}  // namespace bw
