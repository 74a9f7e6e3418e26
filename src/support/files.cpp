#include "support/files.h"

#include <algorithm>
#include <optional>
#include <random>
#include <string>
#include <system_error>
#include <utility>

#include "support/file_queries.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

constexpr int kMostTemporaries = 64;  // names tried before giving up
constexpr size_t kNameRoom = 200;     // bytes of the target's name in the temporary one; 255 in all
constexpr size_t kUniqueLength = 6;   // letters and digits between the target's name and ".tmp"
constexpr std::string_view kUniqueUnits = "abcdefghijklmnopqrstuvwxyz234567";

std::span<const uint8_t> BytesOf(std::string_view text) {
    return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

FileProblem Renamed(FileProblem problem, const fs::path& file) {
    problem.file = file;
    return problem;
}

// What the names of all temporary files of a target begin with.
fs::path TemporaryStem(const fs::path& target) {
    fs::path::string_type name = target.filename().native();
    if (name.size() > kNameRoom) name.resize(kNameRoom);
    fs::path stem = ".";
    stem += name;
    stem += ".";
    return stem;
}

fs::path TemporaryName(const fs::path& target, std::random_device& random) {
    std::string unique;
    for (size_t i = 0; i < kUniqueLength; ++i)
        unique += kUniqueUnits[random() % kUniqueUnits.size()];
    fs::path temporary = TemporaryStem(target);
    temporary += unique + ".tmp";
    return target.parent_path() / temporary;
}

bool IsTemporaryName(const fs::path& name, const fs::path& stem) {
    if (!name.native().starts_with(stem.native()) || name.extension() != ".tmp") return false;
    const auto unique = name.stem().native().substr(stem.native().size());
    return unique.size() == kUniqueLength && std::ranges::all_of(unique, [](auto unit) {
               return kUniqueUnits.find(static_cast<char>(unit)) != kUniqueUnits.npos;
           });
}

// A claim on the file just made; nothing if whoever clears up behind killed processes was quicker.
std::optional<FileLock> Claim(const fs::path& temporary) {
    FileResult<FileLock> lock = FileLock::TryTake(temporary);
    if (!Exists(temporary)) return std::nullopt;
    if (lock) return std::move(*lock);
    if (lock.Problem().system == std::errc::operation_would_block) return std::nullopt;
    return FileLock();  // of no use here, and then to nobody
}

}  // namespace

File::File(File&& other) noexcept
    : handle_(std::exchange(other.handle_, -1)), name_(std::move(other.name_)) {}

File& File::operator=(File&& other) noexcept {
    if (this != &other) {
        Close();
        handle_ = std::exchange(other.handle_, -1);
        name_ = std::move(other.name_);
    }
    return *this;
}

File::~File() {
    Close();
}

FileLock& FileLock::operator=(FileLock&& other) noexcept {
    if (this != &other) {
        Release();
        handle_ = std::exchange(other.handle_, -1);
    }
    return *this;
}

FileLock::~FileLock() {
    Release();
}

FileResult<> CheckRegularFile(const fs::path& path) {
    switch (KindOf(path)) {
        case FileKind::kFile:
            return {};
        case FileKind::kFolder:
            return ProblemOf(path, std::errc::is_a_directory);
        case FileKind::kNone:
            return WhyNotThere(path);
        default:
            return FileProblem{.file = path, .kind = FileProblem::Kind::kNotRegular};
    }
}

FileResult<ReplacementFile> ReplacementFile::Begin(const fs::path& target) {
    const FileResult<fs::path> file = LinkedFile(target);
    if (!file) return file.Problem();
    if (!file->has_filename()) {
        return ProblemOf(*file, file->empty() ? std::errc::no_such_file_or_directory
                                              : std::errc::is_a_directory);
    }
    // A device or a pipe would be replaced by a plain file, and a rename doesn't ask whether a
    // file is protected against writing.
    const FileResult<> isThere = CheckRegularFile(*file);
    if (isThere) {
        const FileResult<File> old = File::OpenForWriting(*file);
        if (!old) return old.Problem();
    } else if (isThere.Problem().kind != FileProblem::Kind::kNotFound) {
        return isThere.Problem();
    }
    std::random_device random;
    for (int i = 0; i < kMostTemporaries; ++i) {
        const fs::path temporary = TemporaryName(*file, random);
        FileResult<File> contents = File::CreateNew(temporary);
        if (!contents && EntryKind(temporary) != FileKind::kNone) continue;
        if (!contents) return Renamed(contents.Problem(), *file);
        std::optional<FileLock> lock = Claim(temporary);
        if (!lock) continue;
        ReplacementFile replacement;
        replacement.lock_ = std::move(*lock);
        replacement.file_ = std::move(*contents);
        replacement.file_.name_ = file->native();
        replacement.temporary_ = temporary;
        replacement.target_ = *file;
        if (isThere) replacement.file_.TakePermissions(*file);
        return replacement;
    }
    return ProblemOf(*file, std::errc::file_exists);
}

ReplacementFile::ReplacementFile(ReplacementFile&& other) noexcept
    : lock_(std::move(other.lock_)),
      file_(std::move(other.file_)),
      temporary_(std::exchange(other.temporary_, {})),
      target_(std::move(other.target_)) {}

ReplacementFile::~ReplacementFile() {
    if (temporary_.empty()) return;
    file_.Close();
    DeleteFile(temporary_);
}

// Against a crash or a kill of the program and a full disk, the rename is enough. What a power
// failure leaves is the file system's matter: waiting for the disk at each save would cost more
// than the build does.
FileResult<> ReplacementFile::Commit() {
    if (temporary_.empty()) return ProblemOf(target_, std::errc::bad_file_descriptor);
    if (FileResult<> closed = file_.Close(); !closed) return closed;
    if (const FileResult<> renamed = RenameFile(temporary_, target_); !renamed)
        return Renamed(renamed.Problem(), target_);
    temporary_.clear();
    return {};
}

void RemoveAbandonedReplacements(const fs::path& target) {
    const FileResult<fs::path> file = LinkedFile(target);
    if (!file) return;
    const fs::path stem = TemporaryStem(*file);
    const fs::path folder = file->parent_path();
    const auto entries = ListFolder(folder.empty() ? "." : folder);
    if (!entries) return;
    for (const FolderEntry& entry : *entries) {
        if (!IsTemporaryName(entry.path.filename(), stem)) continue;
        const FileResult<FileLock> lock = FileLock::TryTake(entry.path);
        if (lock) DeleteFile(entry.path);
    }
}

FileResult<std::vector<uint8_t>> ReadFile(const fs::path& path, uint64_t limit) {
    if (const FileResult<> regular = CheckRegularFile(path); !regular) return regular.Problem();
    const FileResult<File> file = File::OpenForReading(path);
    if (!file) return file.Problem();
    const FileResult<uint64_t> size = file->Size();
    if (!size) return size.Problem();
    if (*size > limit) {
        return FileProblem{
            .file = path, .kind = FileProblem::Kind::kTooLarge, .size = *size, .limit = limit};
    }
    std::vector<uint8_t> bytes(static_cast<size_t>(*size));
    const FileResult<size_t> arrived = file->ReadAt(0, bytes);
    if (!arrived) return arrived.Problem();
    bytes.resize(*arrived);
    return bytes;
}

FileResult<> WriteFile(const fs::path& path, std::span<const uint8_t> bytes) {
    FileResult<ReplacementFile> replacement = ReplacementFile::Begin(path);
    if (!replacement) return replacement.Problem();
    if (FileResult<> written = replacement->Contents().WriteAt(0, bytes); !written) return written;
    return replacement->Commit();
}

FileResult<> WriteFile(const fs::path& path, std::string_view text) {
    return WriteFile(path, BytesOf(text));
}

FileResult<> WriteScratchFile(const fs::path& path, std::span<const uint8_t> bytes) {
    FileResult<File> file = File::Create(path);
    if (!file) return file.Problem();
    FileResult<> written = file->WriteAt(0, bytes);
    written.Join(file->Close());
    if (!written && IsFile(path)) DeleteFile(path);
    return written;
}

FileResult<> WriteScratchFile(const fs::path& path, std::string_view text) {
    return WriteScratchFile(path, BytesOf(text));
}

}  // namespace bw
