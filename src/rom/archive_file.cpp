#include "rom/archive_file.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include <archive.h>
#include <archive_entry.h>

#include "rom/archive_names.h"
#include "rom/image_crcs.h"
#include "rom/ines_header.h"
#include "rom/utf8_names.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr size_t kMostMembers = 200'000;
constexpr uint64_t kLargestGame =
    kInesHeaderSize + kTrainerSize + 255 * uint64_t{kPrgUnit} + 255 * uint64_t{kChrUnit};
// Formats of one long stream have to be unpacked even to go past a member. So much of it is
// unpacked in all, and so much of members that are larger than games.
constexpr uint64_t kMostUnpacked = uint64_t{16} << 30;
constexpr uint64_t kMostOversize = uint64_t{1} << 30;
constexpr int kMostRetries = 16;

// What a header announces, by bytes 4 and 5.
uint64_t AnnouncedBytes(std::span<const uint8_t> start) {
    InesHeader header;
    if (start.size() < header.bytes.size()) return start.size();
    std::ranges::copy(start.first(header.bytes.size()), header.bytes.begin());
    if (!header.HasMagic()) return header.bytes.size();
    return kInesHeaderSize + (header.Trainer() ? kTrainerSize : 0) +
           uint64_t{header.PrgLow()} * kPrgUnit + uint64_t{header.ChrLow()} * kChrUnit;
}

}  // namespace

// What libarchive reads from.
struct ArchiveFile::Source {
    // After a jump little is asked for, often: the header of one member and the start of its data.
    static constexpr size_t kJumpSize = size_t{16} << 10;
    static constexpr size_t kStreamSize = size_t{128} << 10;

    explicit Source(File opened, uint64_t bytes) : file(std::move(opened)), size(bytes) {}

    static la_ssize_t Read(archive* reader, void* self, const void** data) {
        auto& source = *static_cast<Source*>(self);
        source.buffer.resize(kStreamSize);
        const std::span piece =
            std::span(source.buffer).first(source.jumped ? kJumpSize : kStreamSize);
        const FileResult<size_t> arrived = source.file.ReadAt(source.offset, piece);
        if (!arrived) {
            source.problem = arrived.Problem();
            archive_set_error(reader, EIO, "can't be read");
            return ARCHIVE_FATAL;
        }
        source.jumped = false;
        source.offset += *arrived;
        *data = source.buffer.data();
        return static_cast<la_ssize_t>(*arrived);
    }
    static la_int64_t Skip(archive*, void* self, la_int64_t bytes) {
        auto& source = *static_cast<Source*>(self);
        const uint64_t left = source.size - std::min(source.offset, source.size);
        const uint64_t skipped =
            std::min(static_cast<uint64_t>(std::max<la_int64_t>(bytes, 0)), left);
        source.offset += skipped;
        source.jumped = true;
        return static_cast<la_int64_t>(skipped);
    }
    static la_int64_t Seek(archive*, void* self, la_int64_t offset, int whence) {
        auto& source = *static_cast<Source*>(self);
        const la_int64_t from = whence == SEEK_END   ? static_cast<la_int64_t>(source.size)
                                : whence == SEEK_CUR ? static_cast<la_int64_t>(source.offset)
                                                     : 0;
        if (offset < -from || offset > static_cast<la_int64_t>(source.size) - from) {
            return ARCHIVE_FATAL;
        }
        source.offset = static_cast<uint64_t>(from + offset);
        source.jumped = true;
        return static_cast<la_int64_t>(source.offset);
    }

    // The compression that the first bytes tell. At most one layer is taken off.
    int Filter() const {
        std::array<uint8_t, 6> start{};
        file.ReadAt(0, start);
        const std::string_view text(reinterpret_cast<const char*>(start.data()), start.size());
        if (text.starts_with("\x1F\x8B")) return ARCHIVE_FILTER_GZIP;
        if (text.starts_with("BZh")) return ARCHIVE_FILTER_BZIP2;
        if (text == std::string_view("\xFD\x37zXZ\0", 6)) return ARCHIVE_FILTER_XZ;
        if (text.starts_with("\x28\xB5\x2F\xFD")) return ARCHIVE_FILTER_ZSTD;
        return ARCHIVE_FILTER_NONE;
    }

    // The last four bytes of a gzip file: the size of its data, below 4 GB. Source: RFC 1952.
    uint64_t GzipSize() const {
        std::array<uint8_t, 4> end{};
        if (size < end.size() || file.ReadAt(size - end.size(), end).ValueOr(0) != end.size())
            return 0;
        return end[0] | end[1] << 8 | end[2] << 16 | uint64_t{end[3]} << 24;
    }

    File file;
    uint64_t size;
    uint64_t offset = 0;
    bool jumped = true;
    std::vector<uint8_t> buffer;
    std::optional<FileProblem> problem;
};

void ArchiveFile::Close::operator()(archive* opened) const {
    archive_read_free(opened);
}

ArchiveFile::ArchiveFile(std::filesystem::path path, std::unique_ptr<Source> source)
    : path_(std::move(path)), source_(std::move(source)) {}
ArchiveFile::ArchiveFile(ArchiveFile&&) noexcept = default;
ArchiveFile::~ArchiveFile() = default;

FileResult<ArchiveFile> ArchiveFile::Open(const std::filesystem::path& path) {
    if (const FileResult<> regular = CheckRegularFile(path); !regular) return regular.Problem();
    FileResult<File> file = File::OpenForReading(path);
    if (!file) return file.Problem();
    const FileResult<uint64_t> size = file->Size();
    if (!size) return size.Problem();
    ArchiveFile opened(path, std::make_unique<Source>(std::move(*file), *size));
    opened.OpenFormats();
    return opened;
}

// Only what the name promises is tried: the fewer readers, the fewer that hostile bytes can reach.
void ArchiveFile::OpenFormats() {
    const Utf8Names names;
    archive_.reset(archive_read_new());
    archive* const reader = archive_.get();
    switch (ArchiveKindOf(WideToBytes(PathText(path_.filename())))) {
        case ArchiveKind::kZip:
            archive_read_support_format_zip(reader);
            break;
        case ArchiveKind::kSevenZip:
            archive_read_support_format_7zip(reader);
            break;
        case ArchiveKind::kRar:
            archive_read_support_format_rar(reader);
            archive_read_support_format_rar5(reader);
            break;
        case ArchiveKind::kGzip:
            archive_read_support_format_raw(reader);
            [[fallthrough]];
        default:
            archive_read_support_format_tar(reader);
            if (source_->Filter() != ARCHIVE_FILTER_NONE) {
                archive_read_append_filter(reader, source_->Filter());
            }
            break;
    }
    Utf8Names::PrepareReader(reader);
    archive_read_set_read_callback(reader, &Source::Read);
    archive_read_set_skip_callback(reader, &Source::Skip);
    archive_read_set_seek_callback(reader, &Source::Seek);
    archive_read_set_callback_data(reader, source_.get());
    if (archive_read_open1(reader) < ARCHIVE_WARN) End(LeftOut::Reason::kDamaged);
}

std::optional<ArchiveImage> ArchiveFile::Next() {
    const Utf8Names names;
    archive_entry* entry = nullptr;
    while (Advance(entry)) {
        if (auto image = Look(entry)) return image;
    }
    return std::nullopt;
}

bool ArchiveFile::Advance(archive_entry*& entry) {
    if (ended_ || !PassRest()) return false;
    atMember_ = false;
    int status = ARCHIVE_RETRY;
    for (int i = 0; i < kMostRetries && status == ARCHIVE_RETRY; ++i)
        status = archive_read_next_header(archive_.get(), &entry);
    if (status == ARCHIVE_EOF) {
        ended_ = true;
    } else if (status < ARCHIVE_WARN) {
        const bool encrypted = archive_read_has_encrypted_entries(archive_.get()) > 0;
        End(encrypted ? LeftOut::Reason::kEncrypted : LeftOut::Reason::kDamaged);
    } else if (++members_ > kMostMembers) {
        End(LeftOut::Reason::kTooMany);
    }
    return !ended_;
}

// Whether the next member is within reach. Zip files and bare tar files jump there.
bool ArchiveFile::PassRest() {
    if (!atMember_) return true;
    if (single_) {
        ended_ = true;
        return false;
    }
    const int format = archive_format(archive_.get()) & ARCHIVE_FORMAT_BASE_MASK;
    const bool jumps = format == ARCHIVE_FORMAT_ZIP || format == ARCHIVE_FORMAT_RAR ||
                       (format == ARCHIVE_FORMAT_TAR &&
                        archive_filter_code(archive_.get(), 0) == ARCHIVE_FILTER_NONE);
    if (jumps && size_) return true;
    // Where the size isn't known, it is unpacked here, piece by piece.
    if (!size_) {
        std::vector<uint8_t> piece;
        uint64_t passed = 0;
        while (passed <= kMostOversize && Fill(piece, kLargestGame) && !piece.empty()) {
            passed += piece.size();
            piece.clear();
        }
        size_ = read_;
        if (passed <= kMostOversize) return true;
        LeaveOut(place_, LeftOut::Reason::kTooLarge);
        ended_ = true;
        return false;
    }
    const uint64_t rest = *size_ - std::min(read_, *size_);
    unpacked_ += *size_;
    if (*size_ > kLargestGame) oversize_ += rest;
    if (unpacked_ <= kMostUnpacked && oversize_ <= kMostOversize) return true;
    LeaveOut(place_, LeftOut::Reason::kTooLarge);
    ended_ = true;
    return false;
}

std::string ArchiveFile::NameOf(archive_entry* entry) const {
    if (single_) return WideToBytes(PathText(path_.stem()));
    return PlaceText(Utf8Names::NameOf(entry));
}

std::optional<uint64_t> ArchiveFile::SizeOf(archive_entry* entry) const {
    if (single_ || archive_entry_size_is_set(entry) == 0) return std::nullopt;
    return static_cast<uint64_t>(std::max<la_int64_t>(archive_entry_size(entry), 0));
}

std::optional<ArchiveImage> ArchiveFile::Look(archive_entry* entry) {
    using enum LeftOut::Reason;
    single_ = archive_format(archive_.get()) == ARCHIVE_FORMAT_RAW;
    const std::string name = NameOf(entry);
    const std::optional<std::string> place = NormalPlace(name);
    place_ = place.value_or(std::string());
    size_ = SizeOf(entry);
    read_ = 0;
    atMember_ = true;
    const auto type = archive_entry_filetype(entry);
    if (type == AE_IFDIR) return std::nullopt;
    if (ArchiveKindOf(name) != ArchiveKind::kNone) LeaveOut(place_, kNested);
    if (!HasImageExtension(std::string_view(name).substr(name.rfind('/') + 1))) return std::nullopt;
    const bool link = type == AE_IFLNK || archive_entry_hardlink_w(entry) != nullptr ||
                      archive_entry_hardlink(entry) != nullptr;
    if (!place) {
        LeaveOut(name, kUnsafePath);
    } else if (link) {
        LeaveOut(*place, kLink);
    } else if (archive_entry_is_encrypted(entry) != 0) {
        LeaveOut(*place, kEncrypted);
    } else if (type == AE_IFREG || type == 0) {
        return ArchiveImage{*place, single_ ? source_->GzipSize() : size_.value_or(0)};
    }
    return std::nullopt;
}

bool ArchiveFile::Fill(std::vector<uint8_t>& bytes, uint64_t size) {
    size_t filled = bytes.size();
    bytes.resize(static_cast<size_t>(size));
    la_ssize_t arrived = 1;
    for (int retries = 0; filled < bytes.size() && arrived != 0 && retries < kMostRetries;) {
        arrived = archive_read_data(archive_.get(), bytes.data() + filled, bytes.size() - filled);
        if (arrived == ARCHIVE_RETRY) ++retries;
        if (arrived < 0 && arrived != ARCHIVE_RETRY) break;
        filled += static_cast<size_t>(std::max<la_ssize_t>(arrived, 0));
        read_ += static_cast<uint64_t>(std::max<la_ssize_t>(arrived, 0));
    }
    bytes.resize(filled);
    return arrived >= 0;
}

FileResult<ImageFile> ArchiveFile::Read(ImageDepth depth) {
    const Utf8Names names;
    std::vector<uint8_t> bytes;
    bool whole = Fill(bytes, std::min<uint64_t>(kInesHeaderSize, size_.value_or(kInesHeaderSize)));
    if (whole && depth != ImageDepth::kHeader) {
        uint64_t wanted = AnnouncedBytes(bytes);
        const uint64_t all = size_.value_or(kSummedBytes);
        if (depth == ImageDepth::kAll && all <= kSummedBytes) {
            oversize_ += all - std::min(all, wanted);
            if (oversize_ <= kMostOversize) wanted = all;
        }
        whole = Fill(bytes, std::min(wanted, all));
        // The format's own sum shows at the end.
        std::vector<uint8_t> behind;
        if (whole && bytes.size() >= all) whole = Fill(behind, 1);
    }
    if (!whole) {
        LeaveOut(place_, LeftOut::Reason::kDamaged);
        if (source_->problem) return *source_->problem;
        return FileProblem{.file = MemberPath(place_), .kind = FileProblem::Kind::kDamaged};
    }
    const bool toEnd = bytes.size() < AnnouncedBytes(bytes);
    const uint64_t told =
        single_ && !toEnd ? std::max<uint64_t>(source_->GzipSize(), bytes.size()) : bytes.size();
    const uint64_t size = size_.value_or(told);
    return ImageFile(std::move(bytes), size);
}

// As text: a place that is absolute would replace the archive's path.
std::filesystem::path ArchiveFile::MemberPath(const std::string& place) const {
    std::filesystem::path member = path_;
    if (!place.empty()) member += "/";
    member += NamePath(place);
    return member;
}

void ArchiveFile::LeaveOut(const std::string& place, LeftOut::Reason reason) {
    leftOut_.push_back({MemberPath(place), reason});
}

void ArchiveFile::End(LeftOut::Reason reason) {
    leftOut_.push_back({path_, reason});
    ended_ = true;
}

FileProblem ArchiveFile::WhyMissing(const std::string& place) const {
    using Kind = FileProblem::Kind;
    if (source_->problem) return *source_->problem;
    const std::filesystem::path file = MemberPath(place);
    for (const LeftOut& item : leftOut_) {
        if (item.place != file && item.place != path_) continue;
        if (item.reason == LeftOut::Reason::kEncrypted)
            return {.file = item.place, .kind = Kind::kEncrypted};
        if (item.reason == LeftOut::Reason::kDamaged)
            return {.file = item.place, .kind = Kind::kDamaged};
    }
    return ProblemOf(file, std::errc::no_such_file_or_directory);
}

}  // namespace bw
