#include "support/files.h"

#include <algorithm>
#include <cerrno>
#include <random>
#include <system_error>
#include <utility>

namespace bw {
namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;        // as the Linux kernel follows at most
constexpr int kMostTemporaries = 64;  // names tried before giving up
constexpr size_t kNameRoom = 200;     // bytes of the target's name in the temporary one; 255 in all

std::span<const uint8_t> BytesOf(std::string_view text) {
    return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

// The file that is meant, behind links that may lead nowhere yet.
std::optional<fs::path> FollowLinks(fs::path path) {
    std::error_code error;
    for (int i = 0; i < kMostLinks; ++i) {
        if (!fs::is_symlink(path, error)) return path;
        const fs::path destination = fs::read_symlink(path, error);
        if (error) return std::nullopt;
        path = path.parent_path() / destination;
    }
    return std::nullopt;
}

fs::path TemporaryName(const fs::path& target, std::random_device& random) {
    fs::path::string_type name = target.filename().native();
    if (name.size() > kNameRoom) name.resize(kNameRoom);
    std::string unique = ".";
    for (int i = 0; i < 6; ++i)
        unique += "abcdefghijklmnopqrstuvwxyz234567"[random() % 32];
    fs::path temporary = ".";
    temporary += name;
    temporary += unique + ".tmp";
    return target.parent_path() / temporary;
}

}  // namespace

File::File(File&& other) noexcept : handle_(std::exchange(other.handle_, -1)) {}

File& File::operator=(File&& other) noexcept {
    if (this != &other) {
        Close();
        handle_ = std::exchange(other.handle_, -1);
    }
    return *this;
}

File::~File() {
    Close();
}

std::optional<ReplacementFile> ReplacementFile::Begin(const fs::path& target) {
    const auto file = FollowLinks(target);
    if (!file || !file->has_filename()) return std::nullopt;
    std::error_code error;
    const fs::file_status status = fs::status(*file, error);
    // A device or a pipe would be replaced by a plain file, and a rename doesn't ask whether a
    // file is protected against writing.
    const bool mayReplace =
        !fs::exists(status) || (fs::is_regular_file(status) && File::OpenForWriting(*file));
    if (!mayReplace) return std::nullopt;
    std::random_device random;
    for (int i = 0; i < kMostTemporaries; ++i) {
        const fs::path temporary = TemporaryName(*file, random);
        auto contents = File::CreateNew(temporary);
        if (!contents && fs::exists(fs::symlink_status(temporary, error))) continue;
        if (!contents) return std::nullopt;
        ReplacementFile replacement;
        replacement.file_ = std::move(*contents);
        replacement.temporary_ = temporary;
        replacement.target_ = *file;
        if (fs::exists(status)) fs::permissions(temporary, status.permissions(), error);
        return replacement;
    }
    return std::nullopt;
}

ReplacementFile::ReplacementFile(ReplacementFile&& other) noexcept
    : file_(std::move(other.file_)),
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
bool ReplacementFile::Commit() {
    if (temporary_.empty() || !file_.Close()) return false;
    std::error_code error;
    fs::rename(temporary_, target_, error);
    if (error) return false;
    temporary_.clear();
    return true;
}

std::optional<std::vector<uint8_t>> ReadFile(const fs::path& path, uint64_t limit) {
    const auto file = File::OpenForReading(path);
    if (!file) return std::nullopt;
    const auto size = file->Size();
    if (!size || *size > limit) return std::nullopt;
    std::vector<uint8_t> bytes(static_cast<size_t>(*size));
    const auto arrived = file->ReadAt(0, bytes);
    if (!arrived) return std::nullopt;
    bytes.resize(*arrived);
    return bytes;
}

bool WriteFile(const fs::path& path, std::span<const uint8_t> bytes) {
    auto replacement = ReplacementFile::Begin(path);
    return replacement && replacement->Contents().WriteAt(0, bytes) && replacement->Commit();
}

bool WriteFile(const fs::path& path, std::string_view text) {
    return WriteFile(path, BytesOf(text));
}

bool WriteScratchFile(const fs::path& path, std::span<const uint8_t> bytes) {
    auto file = File::Create(path);
    if (!file) return false;
    if (file->WriteAt(0, bytes) && file->Close()) return true;
    const int reason = errno;  // for LastFileProblem
    file->Close();
    std::error_code error;
    if (fs::is_regular_file(path, error)) fs::remove(path, error);
    errno = reason;
    return false;
}

bool WriteScratchFile(const fs::path& path, std::string_view text) {
    return WriteScratchFile(path, BytesOf(text));
}

bool MakeFolders(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    return fs::is_directory(folder, error);
}

bool RemoveFolder(const fs::path& folder) {
    if (folder.empty()) return false;
    std::error_code error;
    fs::remove_all(folder, error);
    return !error;
}

bool DeleteFile(const fs::path& path) {
    std::error_code error;
    // remove() would take an empty folder as well.
    if (path.empty() || fs::is_directory(fs::symlink_status(path, error))) return false;
    fs::remove(path, error);
    return !error;
}

FileProblem LastFileProblem(const std::filesystem::path& file) {
    return {file, errno == 0 ? std::string() : std::generic_category().message(errno)};
}

}  // namespace bw
