// Databases of game names: the XML form of the preservation groups ("datafile", Logiqx) and the
// older form of clrmamepro ("game ( name "..." rom ( name "..." size N crc 89ABCDEF ) )"). The file
// is read as a stream, so that one of 100 MB takes no more memory than the names that are wanted.
// Entities and links of a document are never followed.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "language/language.h"
#include "support/file_problem.h"
#include "support/result.h"

namespace bw {

struct DatNames {
    // The game's name by the CRC of one of its files; the first one that the database has.
    std::unordered_map<uint32_t, std::u16string> byCrc;
    uint64_t roms = 0;           // files that the database tells of
    std::u16string description;  // of the database, where it has one; else its name
};

// What is wrong with a database.
struct DatProblem {
    enum class Kind : uint8_t { kFile, kNoDatabase, kDamaged };
    Kind kind = Kind::kFile;
    FileProblem file{};  // kFile
    uint64_t line = 0;   // kDamaged: where, from 1
};

// Bytes read of bytes in all; false to stop.
using DatProgress = std::function<bool(uint64_t done, uint64_t total)>;

// The names of the CRCs that are wanted. Stopped, it gives what it has. A database that ends in the
// middle, or can't be read further, is kDamaged: no names of half a database.
Result<DatNames, DatProblem> ReadDat(const std::filesystem::path& file,
                                     const std::unordered_set<uint32_t>& wanted,
                                     const DatProgress& progress = {});

// The words for people, the file's name among them.
std::u16string DatProblemText(const DatProblem& problem, const std::filesystem::path& file,
                              Language language);

}  // namespace bw
