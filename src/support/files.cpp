#include "support/files.h"

#include <algorithm>
#include <optional>
#include <random>
#include <string>
#include <system_error>
#include <utility>

namespace bw {
namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;        // as the Linux kernel follows at most
constexpr int kMostTemporaries = 64;  // names tried before giving up
constexpr size_t kNameRoom = 200;     // bytes of the target's name in the temporary one; 255 in all
constexpr size_t kUniqueLength = 6;   // letters and digits between the target's name and ".tmp"
constexpr std::string_view kUniqueUnits = "abcdefghijklmnopqrstuvwxyz234567";

std::span<const uint8_t> BytesOf(std::string_view text) {
    return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

// The file that is meant, behind links that may lead nowhere yet.
FileResult<fs::path> FollowLinks(const fs::path& link) {
    fs::path path = link;
    std::error_code error;
    for (int i = 0; i < kMostLinks; ++i) {
        if (!fs::is_symlink(path, error)) return path;
        const fs::path destination = fs::read_symlink(path, error);
        if (error) return ProblemOf(path, error);
        path = path.parent_path() / destination;
    }
    return ProblemOf(link, std::errc::too_many_symbolic_link_levels);
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
    std::error_code error;
    if (!fs::exists(temporary, error)) return std::nullopt;
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
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    switch (status.type()) {
        case fs::file_type::regular:
            return {};
        case fs::file_type::directory:
            return ProblemOf(path, std::errc::is_a_directory);
        case fs::file_type::not_found:
        case fs::file_type::none:
            return error ? ProblemOf(path, error)
                         : ProblemOf(path, std::errc::no_such_file_or_directory);
        default:
            return FileProblem{.file = path, .kind = FileProblem::Kind::kNotRegular};
    }
}

FileResult<ReplacementFile> ReplacementFile::Begin(const fs::path& target) {
    const FileResult<fs::path> file = FollowLinks(target);
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
    std::error_code error;
    std::random_device random;
    for (int i = 0; i < kMostTemporaries; ++i) {
        const fs::path temporary = TemporaryName(*file, random);
        FileResult<File> contents = File::CreateNew(temporary);
        if (!contents && fs::exists(fs::symlink_status(temporary, error))) continue;
        if (!contents) return Renamed(contents.Problem(), *file);
        std::optional<FileLock> lock = Claim(temporary);
        if (!lock) continue;
        ReplacementFile replacement;
        replacement.lock_ = std::move(*lock);
        replacement.file_ = std::move(*contents);
        replacement.file_.name_ = file->native();
        replacement.temporary_ = temporary;
        replacement.target_ = *file;
        if (isThere) fs::permissions(temporary, fs::status(*file, error).permissions(), error);
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
    std::error_code error;
    fs::remove(temporary_, error);
}

// Against a crash or a kill of the program and a full disk, the rename is enough. What a power
// failure leaves is the file system's matter: waiting for the disk at each save would cost more
// than the build does.
FileResult<> ReplacementFile::Commit() {
    if (temporary_.empty()) return ProblemOf(target_, std::errc::bad_file_descriptor);
    if (FileResult<> closed = file_.Close(); !closed) return closed;
    std::error_code error;
    fs::rename(temporary_, target_, error);
    if (error) return ProblemOf(target_, error);
    temporary_.clear();
    return {};
}

void RemoveAbandonedReplacements(const fs::path& target) {
    const FileResult<fs::path> file = FollowLinks(target);
    if (!file) return;
    const fs::path stem = TemporaryStem(*file);
    std::vector<fs::path> found;
    std::error_code error;
    const fs::path folder = file->parent_path();
    for (fs::directory_iterator at(folder.empty() ? "." : folder, error), end; !error && at != end;
         at.increment(error)) {
        if (IsTemporaryName(at->path().filename(), stem)) found.push_back(at->path());
    }
    for (const fs::path& temporary : found) {
        const FileResult<FileLock> lock = FileLock::TryTake(temporary);
        if (lock) fs::remove(temporary, error);
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
    std::error_code error;
    if (!written && fs::is_regular_file(path, error)) fs::remove(path, error);
    return written;
}

FileResult<> WriteScratchFile(const fs::path& path, std::string_view text) {
    return WriteScratchFile(path, BytesOf(text));
}

FileResult<> MakeFolders(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    std::error_code ignored;
    if (fs::is_directory(folder, ignored)) return {};
    return error ? ProblemOf(folder, error) : ProblemOf(folder, std::errc::not_a_directory);
}

FileResult<> RemoveFolder(const fs::path& folder) {
    if (folder.empty()) return ProblemOf(folder, std::errc::no_such_file_or_directory);
    std::error_code error;
    fs::remove_all(folder, error);
    return error ? FileResult<>(ProblemOf(folder, error)) : FileResult<>();
}

FileResult<> DeleteFile(const fs::path& path) {
    if (path.empty()) return ProblemOf(path, std::errc::no_such_file_or_directory);
    std::error_code error;
    // remove() would take an empty folder as well.
    if (fs::is_directory(fs::symlink_status(path, error))) {
        return ProblemOf(path, std::errc::is_a_directory);
    }
    fs::remove(path, error);
    return error ? FileResult<>(ProblemOf(path, error)) : FileResult<>();
}

}  // namespace bw
