// Game lists as text: the .fcl files, and the list that the program remembers between runs.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

#include "language/language.h"
#include "list/game_list.h"
#include "support/diagnostic.h"
#include "support/ini_file.h"

namespace bw {

struct ListLoadResult {
    size_t added = 0;
    uint32_t announced = 0;  // the number of entries that the text says it has
    bool overLimit = false;  // the list and the announced entries exceed kListLimit
};

// True for the keys that a list text has, the widths of the remembered list's columns among them:
// what IniFile is to keep of any text, however long.
bool IsListKey(std::u16string_view section, std::u16string_view key);

// Appends the entries of a list text, up to kListLimit in all. An entry whose file is gone is kept;
// a relative path wins over the absolute one if it names a file below `base`, the folder that
// relative paths count from. The text's own count rules: where it announces more entries than the
// text holds, the missing ones are appended with empty paths. `otherBase`, if not empty, is where a
// relative path that names no file below `base` is tried next.
ListLoadResult AppendListEntries(const IniFile& text, const std::filesystem::path& base,
                                 GameList& list, const std::filesystem::path& otherBase = {});

// The section "history" with the whole list. Line breaks in a name or a remark, which the format
// can't hold, become blanks.
void StoreListEntries(const GameList& list, const std::filesystem::path& base, IniFile& text);

// A list file by path. A file that holds no list is a problem of kWrongKind.
FileResult<ListLoadResult> LoadListFile(const std::filesystem::path& file,
                                        const std::filesystem::path& base, GameList& list,
                                        const std::filesystem::path& otherBase = {});
FileResult<> SaveListFile(const std::filesystem::path& file, const GameList& list,
                          const std::filesystem::path& base);

// Tells what is wrong with a list file.
Diagnostic ListDiagnostic(const FileProblem& problem, Language language);

// The path with ".fcl" appended, unless it ends in it already in any letter case.
std::filesystem::path WithListExtension(std::filesystem::path file);

}  // namespace bw
