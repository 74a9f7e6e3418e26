#include "list/game_entry.h"

#include <utility>

#include "rom/board_tables.h"
#include "rom/image_files.h"
#include "support/parallel.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

// As many requests as keep a disk busy; more than there are processors, since the threads mostly
// wait.
constexpr size_t kReaderThreads = 8;
// Few enough that the last pieces end together, enough that handing them out costs nothing.
constexpr size_t kPiece = 64;

void SetHeaderState(GameEntry& entry, size_t arrived) {
    entry.headerRead = arrived == kInesHeaderSize;
    entry.coolboySupported = CoolboySupported(entry.header);
    entry.coolgirlSupported = CoolgirlSupported(entry.header);
}

void ReadHeader(GameEntry& entry, const std::filesystem::path& file) {
    const FileResult<ImageFile> image = OpenImage(file);
    SetHeaderState(entry, image ? image->ReadAt(0, entry.header.bytes).ValueOr(0) : 0);
}

std::u16string FolderPrefix(const std::filesystem::path& folder) {
    return PathText(folder / "");
}

}  // namespace

GameEntry::GameEntry(std::u16string path_)
    : path(std::move(path_)), name(NameWithoutExtension(path)) {
    ReadHeader(*this, TextPath(path));
}

GameEntry::GameEntry(const std::filesystem::path& file)
    : path(PathText(file)), name(NameWithoutExtension(path)) {
    ReadHeader(*this, file);
}

std::vector<GameEntry> ReadGameEntries(std::span<const std::filesystem::path> paths) {
    std::vector<GameEntry> entries(paths.size());
    ForPieces(paths.size(), kPiece, kReaderThreads, [&](size_t begin, size_t end) {
        for (size_t i = begin; i < end; ++i)
            entries[i] = GameEntry(paths[i]);
    });
    return entries;
}

std::vector<GameEntry> ReadGameFolder(const std::filesystem::path& folder,
                                      std::vector<FileProblem>* unread) {
    const FolderImages found = ListImages(folder);
    if (unread != nullptr) *unread = found.unread;
    std::vector<std::u16string> prefixes;
    prefixes.reserve(found.folders.size());
    for (const std::filesystem::path& path : found.folders)
        prefixes.push_back(FolderPrefix(path));

    std::vector<GameEntry> entries(found.images.size());
    ForPieces(entries.size(), kPiece, kReaderThreads, [&](size_t begin, size_t end) {
        HeaderReader reader(found);
        for (size_t i = begin; i < end; ++i) {
            const FolderImages::Image& image = found.images[i];
            entries[i].path = prefixes[image.folder] + BytesToWide(image.name);
            entries[i].name = NameWithoutExtension(entries[i].path);
            SetHeaderState(entries[i], reader.Read(image, entries[i].header.bytes));
        }
    });
    return entries;
}

}  // namespace bw
