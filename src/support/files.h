// Files and folders. A file that replaces another is written beside it and renamed over it, so a
// reader, a full disk or a kill meets the old file or the new one, never half of one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace bw {

// One open file. Moves, doesn't copy; the destructor closes it.
class File {
  public:
    File() = default;
    File(File&& other) noexcept;
    File& operator=(File&& other) noexcept;
    ~File();

    static std::optional<File> OpenForReading(const std::filesystem::path& path);
    // Creates the file or empties it.
    static std::optional<File> Create(const std::filesystem::path& path);

    std::optional<uint64_t> Size() const;
    // Reads at a byte offset from the start; the result is the number of bytes that arrived,
    // which is less than asked for at the file's end, or nothing on an error.
    std::optional<size_t> ReadAt(uint64_t offset, std::span<uint8_t> buffer) const;
    // True if all bytes were written.
    bool WriteAt(uint64_t offset, std::span<const uint8_t> bytes);
    bool SetEnd(uint64_t size);
    // True if the file was open and closing reported no error. Later calls give false.
    bool Close();

  private:
    friend class ReplacementFile;
    // A file whose name wasn't in use before.
    static std::optional<File> CreateNew(const std::filesystem::path& path);
    // A file that is there, for writing; its contents stay.
    static std::optional<File> OpenForWriting(const std::filesystem::path& path);

    explicit File(intptr_t handle) : handle_(handle) {}
    intptr_t handle_ = -1;
};

// A file in the making: a temporary file in the target's folder that takes the target's name at
// Commit. Without a Commit the destructor removes it and the target stays as it was. A target that
// is a symbolic link keeps the link: the file that it names is replaced. An existing target's
// permission bits are kept.
class ReplacementFile {
  public:
    static std::optional<ReplacementFile> Begin(const std::filesystem::path& target);
    ReplacementFile(ReplacementFile&& other) noexcept;
    ReplacementFile& operator=(ReplacementFile&&) = delete;
    ~ReplacementFile();

    File& Contents() { return file_; }
    bool Commit();

  private:
    ReplacementFile() = default;
    File file_;
    std::filesystem::path temporary_;
    std::filesystem::path target_;
};

// The whole file, or nothing if it can't be read or is larger than `limit` bytes.
std::optional<std::vector<uint8_t>> ReadFile(const std::filesystem::path& path,
                                             uint64_t limit = uint64_t{1} << 30);

// Replaces the file in one safe step.
bool WriteFile(const std::filesystem::path& path, std::span<const uint8_t> bytes);
bool WriteFile(const std::filesystem::path& path, std::string_view text);

// Writes a file of the work folder, which nobody else reads before the build is done: created or
// emptied in place, without the temporary file of WriteFile. A file that can't be written whole is
// removed, so that its reader misses it instead of taking half of it.
bool WriteScratchFile(const std::filesystem::path& path, std::string_view text);
bool WriteScratchFile(const std::filesystem::path& path, std::span<const uint8_t> bytes);

// Each missing level in turn. True if the folder exists afterwards.
bool MakeFolders(const std::filesystem::path& folder);
// The folder with all it holds; links inside are removed, not followed. True if it is gone.
bool RemoveFolder(const std::filesystem::path& folder);
// True if the file is gone, also if it wasn't there; false for an empty path.
bool DeleteFile(const std::filesystem::path& path);

// A file that couldn't be read or written, and what the system said of it (may be empty).
struct FileProblem {
    std::filesystem::path file;
    std::string reason;
};

// The problem of the call of this header that has just failed on this thread.
FileProblem LastFileProblem(const std::filesystem::path& file);

}  // namespace bw
