// One game of the user's list.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "rom/image_crcs.h"
#include "rom/image_files.h"
#include "rom/ines_header.h"
#include "support/file_problem.h"

namespace bw {

struct GameEntry {
    std::u16string path;    // relative to the program's folder, or absolute
    std::u16string name;    // what the list shows and the console prints
    std::u16string remark;  // the user's own words
    InesHeader header;
    // Of the file, bytes, when it was read last or as a list remembers it; 0 where nobody knows.
    uint64_t size = 0;
    std::optional<DataCrcs> crcs = {};  // once somebody has read the data
    bool missing = false;               // no file was there when it was looked for last
    bool headerRead = false;            // 16 bytes could be read from the file
    bool checked = false;               // takes part in a build
    bool coolboySupported = false;
    bool coolgirlSupported = false;

    GameEntry() = default;
    // Reads 16 bytes of the file and no more. A file that can't be opened leaves a usable entry
    // without a valid header; of a shorter one the bytes that arrived count, and headerRead stays
    // false. A relative path is taken from the current folder.
    explicit GameEntry(std::u16string path);
    explicit GameEntry(const std::filesystem::path& path);
    GameEntry(const std::filesystem::path& path, const FileResult<ImageFile>& image);

    // No file of a game any more, or one that ends before its header says; a missing one isn't
    // meant.
    bool IsDamaged() const;
    // The magic is there and the low PRG size is not 0.
    bool HasValidHeader() const { return header.IsValid(); }
};

// The shallow reading of many files at once, in the order of the paths: several threads, since a
// cold disk answers many questions in the time of one, and each archive once. `paths` are taken
// from the current folder.
std::vector<GameEntry> ReadGameEntries(std::span<const std::filesystem::path> paths);

// The shallow reading of all .nes files (in any letter case) of a folder, its folders and the
// archives in them, in order of path, component by component: the fast way to take in a collection.
// Links to folders are not followed. Files without a valid header are among the entries. `folder`
// may be an archive. `unread`, if given, receives the folders and archives that couldn't be read,
// `leftOut` what archives hold that isn't taken in.
std::vector<GameEntry> ReadGameFolder(const std::filesystem::path& folder,
                                      std::vector<FileProblem>* unread = nullptr,
                                      std::vector<LeftOut>* leftOut = nullptr);

}  // namespace bw
