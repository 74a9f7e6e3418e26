// Files and folders. A file that replaces another is written beside it and renamed over it, so a
// reader, a full disk or a kill meets the old file or the new one, never half of one. What goes
// wrong comes back as a FileProblem; nothing is left in errno for a caller.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "support/file_problem.h"

namespace bw {

// One open file. Moves, doesn't copy; the destructor closes it.
class File {
  public:
    File() = default;
    File(File&& other) noexcept;
    File& operator=(File&& other) noexcept;
    ~File();

    static FileResult<File> OpenForReading(const std::filesystem::path& path);
    // Creates the file or empties it.
    static FileResult<File> Create(const std::filesystem::path& path);

    FileResult<uint64_t> Size() const;
    // Reads at a byte offset from the start; the result is the number of bytes that arrived,
    // which is less than asked for at the file's end.
    FileResult<size_t> ReadAt(uint64_t offset, std::span<uint8_t> buffer) const;
    // Writes all bytes.
    FileResult<> WriteAt(uint64_t offset, std::span<const uint8_t> bytes);
    FileResult<> SetEnd(uint64_t size);
    // A file that isn't open, or not any more, is a problem.
    FileResult<> Close();

  private:
    friend class ReplacementFile;
    using Name = std::filesystem::path::string_type;

    // A file whose name wasn't in use before.
    static FileResult<File> CreateNew(const std::filesystem::path& path);
    // A file that is there, for writing; its contents stay.
    static FileResult<File> OpenForWriting(const std::filesystem::path& path);

    File(intptr_t handle, Name name) : handle_(handle), name_(std::move(name)) {}
    // Of the system's call that has just failed.
    FileProblem LastProblem() const;
    // A new file gets the permission bits of the one that it replaces.
    void TakePermissions(const std::filesystem::path& from);

    intptr_t handle_ = -1;
    Name name_;  // the file that problems name
};

// A claim on a file or a folder that ends with its holder, however that ends: what a killed process
// has left behind can be told from what a living one still uses. Moves, doesn't copy.
class FileLock {
  public:
    FileLock() = default;
    FileLock(FileLock&& other) noexcept : handle_(std::exchange(other.handle_, -1)) {}
    FileLock& operator=(FileLock&& other) noexcept;
    ~FileLock();

    // std::errc::operation_would_block where another one holds it; other problems where the file
    // system knows no such claims.
    static FileResult<FileLock> TryTake(const std::filesystem::path& path);

  private:
    explicit FileLock(intptr_t handle) : handle_(handle) {}
    void Release();

    intptr_t handle_ = -1;
};

// True for a regular file that is within reach; opens nothing. A folder, a device or a pipe is a
// problem.
FileResult<> CheckRegularFile(const std::filesystem::path& path);

// A file in the making: a temporary file in the target's folder that takes the target's name at
// Commit. Without a Commit the destructor removes it and the target stays as it was. A target that
// is a symbolic link keeps the link: the file that it names is replaced. An existing target's
// permission bits are kept.
class ReplacementFile {
  public:
    static FileResult<ReplacementFile> Begin(const std::filesystem::path& target);
    ReplacementFile(ReplacementFile&& other) noexcept;
    ReplacementFile& operator=(ReplacementFile&&) = delete;
    ~ReplacementFile();

    // Problems of it name the target.
    File& Contents() { return file_; }
    // The file's name until Commit.
    const std::filesystem::path& Temporary() const { return temporary_; }
    // Once.
    FileResult<> Commit();

  private:
    ReplacementFile() = default;
    FileLock lock_;  // of the temporary file; lives longer than its rename
    File file_;
    std::filesystem::path temporary_;
    std::filesystem::path target_;
};

// Removes the temporary files that killed processes have left beside the target.
void RemoveAbandonedReplacements(const std::filesystem::path& target);

// The whole of a regular file of at most `limit` bytes.
FileResult<std::vector<uint8_t>> ReadFile(const std::filesystem::path& path,
                                          uint64_t limit = uint64_t{1} << 30);

// Replaces the file in one safe step.
FileResult<> WriteFile(const std::filesystem::path& path, std::span<const uint8_t> bytes);
FileResult<> WriteFile(const std::filesystem::path& path, std::string_view text);

// Writes a file of the work folder, which nobody else reads before the build is done: created or
// emptied in place, without the temporary file of WriteFile. A file that can't be written whole is
// removed, so that its reader misses it instead of taking half of it.
FileResult<> WriteScratchFile(const std::filesystem::path& path, std::string_view text);
FileResult<> WriteScratchFile(const std::filesystem::path& path, std::span<const uint8_t> bytes);

// The file takes the other's name, and its place if there is one.
FileResult<> RenameFile(const std::filesystem::path& from, const std::filesystem::path& to);
// A copy that wasn't there before.
FileResult<> CopyFile(const std::filesystem::path& from, const std::filesystem::path& to);
// A folder that wasn't there before, in one that is, for this user alone where the system has such.
FileResult<> MakeOwnFolder(const std::filesystem::path& folder);
// Each missing level in turn. True if the folder exists afterwards.
FileResult<> MakeFolders(const std::filesystem::path& folder);
// The folder with all it holds; links inside are removed, not followed. True if it is gone.
FileResult<> RemoveFolder(const std::filesystem::path& folder);
// True if the file is gone, also if it wasn't there; a problem for an empty path.
FileResult<> DeleteFile(const std::filesystem::path& path);

}  // namespace bw
