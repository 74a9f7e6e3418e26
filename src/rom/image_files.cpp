#include "rom/image_files.h"

#include <algorithm>
#include <thread>
#include <unordered_map>
#include <utility>

#include "rom/archive_file.h"
#include "rom/archive_names.h"
#include "support/file_queries.h"
#include "support/parallel.h"
#include "support/text.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

// Of those that are visited: few enough that the last ones end together.
constexpr size_t kPiece = 16;

FileResult<ImageFile> OpenPlain(const fs::path& path) {
    if (const FileResult<> regular = CheckRegularFile(path); !regular) return regular.Problem();
    FileResult<File> file = File::OpenForReading(path);
    if (!file) return file.Problem();
    return ImageFile(std::move(*file));
}

// The images of one archive that are wanted, by place.
struct ArchiveVisit {
    fs::path archive;
    std::unordered_map<std::string, std::vector<size_t>> wanted;
};

// Which paths lead into archives, and which don't. Each archive's own path is asked for once.
class VisitPlan {
  public:
    explicit VisitPlan(std::span<const fs::path> paths) {
        for (size_t i = 0; i < paths.size(); ++i) {
            if (!AddToArchive(paths[i], i)) plain.push_back(i);
        }
    }

    std::vector<ArchiveVisit> archives;
    std::vector<size_t> plain;

  private:
    bool AddToArchive(const fs::path& path, size_t index) {
        for (ArchiveSplits split(path); split.Next();) {
            const auto [known, isNew] = known_.try_emplace(split.Prefix(), kNoArchive);
            if (isNew && IsFile(split.Archive())) {
                known->second = archives.size();
                archives.push_back({split.Archive(), {}});
            }
            if (known->second == kNoArchive) continue;
            std::string place = split.Place();
            if (auto normal = NormalPlace(place)) place = *std::move(normal);
            archives[known->second].wanted[std::move(place)].push_back(index);
            return true;
        }
        return false;
    }

    static constexpr size_t kNoArchive = SIZE_MAX;
    std::unordered_map<fs::path::string_type, size_t> known_;
};

void VisitArchive(ArchiveVisit& archive, ImageDepth depth, const ImageVisit& visit,
                  const std::function<bool()>& goOn) {
    const auto stopped = [&] { return goOn && !goOn(); };
    auto& wanted = archive.wanted;
    FileResult<ArchiveFile> opened = ArchiveFile::Open(archive.archive);
    while (opened && !wanted.empty()) {
        if (stopped()) return;
        const std::optional<ArchiveImage> image = opened->Next();
        if (!image) break;
        const auto found = wanted.find(image->place);
        if (found == wanted.end()) continue;
        FileResult<ImageFile> read = opened->Read(depth);
        for (const size_t index : found->second)
            visit(index, read);
        wanted.erase(found);
    }
    for (const auto& [place, indices] : wanted) {
        if (stopped()) return;
        FileResult<ImageFile> missing = opened ? opened->WhyMissing(place) : opened.Problem();
        for (const size_t index : indices)
            visit(index, missing);
    }
}

// What one archive has for a list of images.
struct ArchiveListing {
    struct Found {
        std::string place;
        ImageStart start;
    };
    std::vector<Found> images;
    std::vector<LeftOut> leftOut;
    std::optional<FileProblem> unread;
};

// `below`: a folder in the archive, or nothing for all of it.
ArchiveListing ListArchive(const fs::path& path, const std::string& below) {
    ArchiveListing listing;
    FileResult<ArchiveFile> archive = ArchiveFile::Open(path);
    if (!archive) {
        listing.unread = archive.Problem();
        return listing;
    }
    while (auto image = archive->Next()) {
        if (!image->place.starts_with(below)) continue;
        const FileResult<ImageFile> read = archive->Read(ImageDepth::kHeader);
        if (!read) continue;
        listing.images.push_back({std::move(image->place), StartOf(*read)});
        listing.images.back().start.size = image->size;
    }
    // Of members of the same name the first one counts: that one is opened.
    using Found = ArchiveListing::Found;
    std::ranges::stable_sort(listing.images, PlaceLess, &Found::place);
    const auto doubles =
        std::unique(listing.images.begin(), listing.images.end(),
                    [](const Found& a, const Found& b) { return a.place == b.place; });
    listing.images.erase(doubles, listing.images.end());
    listing.leftOut = archive->LeftOutSoFar();
    if (listing.images.empty() && listing.leftOut.empty() && below.empty()) {
        listing.leftOut.push_back({path, LeftOut::Reason::kNoImages});
    }
    return listing;
}

// A folder tree, with a gap for each archive among the images; then the archives, by several
// threads; then all in order.
class ImageSearch {
  public:
    explicit ImageSearch(FolderImages& out) : out_(out) {}

    // Goes down at most as many levels as a path that the system opens can name.
    void AddFolder(const fs::path& folder) {
        FileResult<std::vector<FolderItem>> items = ReadFolder(folder);
        if (!items) {
            out_.unread.push_back(items.Problem());
            return;
        }
        std::ranges::sort(*items, {}, &FolderItem::name);
        const uint32_t index = Folder(folder);
        for (FolderItem& item : *items) {
            if (item.isFolder) {
                AddFolder(folder / NamePath(item.name));
            } else if (HasImageExtension(item.name)) {
                out_.images.push_back({index, std::move(item.name)});
            } else {
                AddArchive(folder / NamePath(item.name), {});
            }
        }
    }

    void AddArchive(fs::path archive, std::string below) {
        archives_.push_back({out_.images.size(), std::move(archive), std::move(below)});
    }

    void ReadArchives() {
        if (archives_.empty()) return;
        std::vector<ArchiveListing> listings(archives_.size());
        const size_t threads = std::clamp<size_t>(std::thread::hardware_concurrency(), 2, 8);
        ForPieces(archives_.size(), 1, threads, [&](size_t begin, size_t end) {
            for (size_t i = begin; i < end; ++i)
                listings[i] = ListArchive(archives_[i].path, archives_[i].below);
        });
        std::vector<FolderImages::Image> before = std::exchange(out_.images, {});
        size_t next = 0;
        const auto takeUpTo = [&](size_t end) {
            for (; next < end; ++next)
                out_.images.push_back(std::move(before[next]));
        };
        for (size_t i = 0; i < archives_.size(); ++i) {
            takeUpTo(archives_[i].gap);
            Take(archives_[i].path, std::move(listings[i]));
        }
        takeUpTo(before.size());
    }

  private:
    struct Archive {
        size_t gap;  // its images go before this one
        fs::path path;
        std::string below;
    };

    uint32_t Folder(const fs::path& folder) {
        out_.folders.push_back(folder);
        return static_cast<uint32_t>(out_.folders.size() - 1);
    }

    void Take(const fs::path& archive, ArchiveListing listing) {
        if (listing.unread) out_.unread.push_back(*std::move(listing.unread));
        std::ranges::move(listing.leftOut, std::back_inserter(out_.leftOut));
        if (listing.images.empty()) return;
        const uint32_t folder = Folder(archive);
        for (ArchiveListing::Found& image : listing.images) {
            const auto start = static_cast<uint32_t>(out_.starts.size());
            out_.starts.push_back(image.start);
            out_.images.push_back({folder, std::move(image.place), start});
        }
    }

    FolderImages& out_;
    std::vector<Archive> archives_;
};

}  // namespace

FileResult<uint64_t> ImageFile::Size() const {
    if (const auto* member = std::get_if<Member>(&source_)) return member->size;
    return std::get<File>(source_).Size();
}

FileResult<size_t> ImageFile::ReadAt(uint64_t offset, std::span<uint8_t> buffer) const {
    const auto* member = std::get_if<Member>(&source_);
    if (member == nullptr) return std::get<File>(source_).ReadAt(offset, buffer);
    const std::span<const uint8_t> bytes = member->bytes;
    if (offset >= bytes.size()) return size_t{0};
    const auto part =
        bytes.subspan(static_cast<size_t>(offset))
            .first(std::min<size_t>(buffer.size(), bytes.size() - static_cast<size_t>(offset)));
    std::ranges::copy(part, buffer.begin());
    return part.size();
}

ImageStart StartOf(const ImageFile& image) {
    ImageStart start;
    start.arrived = static_cast<uint8_t>(image.ReadAt(0, start.bytes).ValueOr(0));
    start.size = image.Size().ValueOr(0);
    return start;
}

FileResult<ImageFile> OpenImage(const fs::path& path) {
    // A path behind an archive names nothing else, so the text alone tells plain files at once.
    if (!ArchiveSplits(path).Next()) return OpenPlain(path);
    std::optional<FileResult<ImageFile>> opened;
    VisitImages({&path, 1}, ImageDepth::kWhole, 1,
                [&](size_t, FileResult<ImageFile>& image) { opened = std::move(image); });
    return std::move(*opened);
}

fs::path ContainerOf(const fs::path& path) {
    const std::optional<ArchivePlace> found = FindInArchive(path);
    return found ? found->archive : path;
}

bool HasArchiveExtension(const fs::path& path) {
    return ArchiveKindOf(WideToBytes(PathText(path.filename()))) != ArchiveKind::kNone;
}

void VisitImages(std::span<const fs::path> paths, ImageDepth depth, size_t threads,
                 const ImageVisit& visit, const std::function<bool()>& goOn) {
    VisitPlan plan(paths);
    const size_t archives = plan.archives.size();
    const size_t pieces = (plan.plain.size() + kPiece - 1) / kPiece;
    // Archives go first: each takes longer than a piece.
    ForPieces(archives + pieces, 1, threads, [&](size_t job, size_t) {
        if (job < archives) {
            VisitArchive(plan.archives[job], depth, visit, goOn);
            return;
        }
        const size_t first = (job - archives) * kPiece;
        const std::span piece = std::span(plan.plain).subspan(first);
        for (const size_t index : piece.first(std::min(kPiece, piece.size()))) {
            if (goOn && !goOn()) return;
            FileResult<ImageFile> image = OpenPlain(paths[index]);
            visit(index, image);
        }
    });
}

fs::path FolderImages::PathOf(const Image& image) const {
    return folders[image.folder] / NamePath(image.name);
}

FolderImages ListImages(const fs::path& folder) {
    FolderImages found;
    ImageSearch search(found);
    const std::optional<ArchivePlace> archive = FindInArchive(folder, true);
    if (archive) {
        const std::string below = NormalPlace(archive->place).value_or(archive->place);
        search.AddArchive(archive->archive, below.empty() ? below : below + "/");
    } else {
        search.AddFolder(folder);
    }
    search.ReadArchives();
    return found;
}

ImageStart HeaderReader::Read(const FolderImages::Image& image) {
    return image.start == FolderImages::kOnDisk ? ReadOnDisk(image) : images_.starts[image.start];
}

bool HasImageExtension(std::string_view name) {
    constexpr std::string_view kExtension = ".nes";
    if (name.size() <= kExtension.size()) return false;
    const std::string_view end = name.substr(name.size() - kExtension.size());
    return std::ranges::equal(end, kExtension, [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b;
    });
}

bool IsWantedName(std::string_view name) {
    return HasImageExtension(name) || ArchiveKindOf(name) != ArchiveKind::kNone;
}

}  // namespace bw
