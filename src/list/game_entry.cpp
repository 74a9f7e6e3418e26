#include "list/game_entry.h"

#include <algorithm>
#include <utility>

#include "rom/board_tables.h"
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

void SetStart(GameEntry& entry, const ImageStart& start) {
    std::copy_n(start.bytes.begin(), start.arrived, entry.header.bytes.begin());
    entry.size = start.size;
    entry.headerRead = start.arrived == kInesHeaderSize;
    entry.coolboySupported = CoolboySupported(entry.header);
    entry.coolgirlSupported = CoolgirlSupported(entry.header);
}

void SetImage(GameEntry& entry, const FileResult<ImageFile>& image) {
    using enum FileProblem::Kind;
    SetStart(entry, image ? StartOf(*image) : ImageStart());
    entry.missing =
        !image && (image.Problem().kind == kNotFound || image.Problem().kind == kNotFolder);
}

std::u16string FolderPrefix(const std::filesystem::path& folder) {
    return PathText(folder / "");
}

}  // namespace

GameEntry::GameEntry(std::u16string path_)
    : path(std::move(path_)), name(NameWithoutExtension(path)) {
    SetImage(*this, OpenImage(TextPath(path)));
}

GameEntry::GameEntry(const std::filesystem::path& file) : GameEntry(file, OpenImage(file)) {}

GameEntry::GameEntry(const std::filesystem::path& file, const FileResult<ImageFile>& image)
    : path(PathText(file)), name(NameWithoutExtension(path)) {
    SetImage(*this, image);
}

bool GameEntry::IsDamaged() const {
    if (missing || (size == 0 && !headerRead)) return false;
    const uint64_t announced = kInesHeaderSize + (header.Trainer() ? kTrainerSize : 0) +
                               uint64_t{header.PrgLow()} * kPrgUnit +
                               uint64_t{header.ChrLow()} * kChrUnit;
    return !headerRead || !HasValidHeader() || size < announced;
}

std::vector<GameEntry> ReadGameEntries(std::span<const std::filesystem::path> paths) {
    std::vector<GameEntry> entries(paths.size());
    VisitImages(paths, ImageDepth::kHeader, kReaderThreads,
                [&](size_t i, const FileResult<ImageFile>& image) {
                    entries[i] = GameEntry(paths[i], image);
                });
    return entries;
}

std::vector<GameEntry> ReadGameFolder(const std::filesystem::path& folder,
                                      std::vector<FileProblem>* unread,
                                      std::vector<LeftOut>* leftOut) {
    const FolderImages found = ListImages(folder);
    if (unread != nullptr) *unread = found.unread;
    if (leftOut != nullptr) *leftOut = found.leftOut;
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
            SetStart(entries[i], reader.Read(image));
        }
    });
    return entries;
}

}  // namespace bw
