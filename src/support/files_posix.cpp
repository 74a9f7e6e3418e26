// File by POSIX calls.
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/files.h"

namespace bw {
namespace {

constexpr mode_t kNewFileMode = 0666;  // less the user's umask

// -1 on failure.
int Open(const std::filesystem::path& path, int flags) {
    int handle = -1;
    do {
        handle = open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY, kNewFileMode);
    } while (handle == -1 && errno == EINTR);
    return handle;
}

}  // namespace

std::optional<File> File::OpenForReading(const std::filesystem::path& path) {
    // O_NONBLOCK: opening a named pipe that nobody writes to must not wait. Plain files ignore it.
    const int handle = Open(path, O_RDONLY | O_NONBLOCK);
    return handle == -1 ? std::nullopt : std::optional(File(handle));
}

std::optional<File> File::Create(const std::filesystem::path& path) {
    const int handle = Open(path, O_RDWR | O_CREAT | O_TRUNC);
    return handle == -1 ? std::nullopt : std::optional(File(handle));
}

std::optional<File> File::CreateNew(const std::filesystem::path& path) {
    const int handle = Open(path, O_RDWR | O_CREAT | O_EXCL);
    return handle == -1 ? std::nullopt : std::optional(File(handle));
}

std::optional<File> File::OpenForWriting(const std::filesystem::path& path) {
    const int handle = Open(path, O_WRONLY | O_NONBLOCK);
    return handle == -1 ? std::nullopt : std::optional(File(handle));
}

std::optional<uint64_t> File::Size() const {
    struct stat status {};
    if (fstat(static_cast<int>(handle_), &status) != 0) return std::nullopt;
    return static_cast<uint64_t>(status.st_size);
}

std::optional<size_t> File::ReadAt(uint64_t offset, std::span<uint8_t> buffer) const {
    size_t done = 0;
    while (done < buffer.size()) {
        const ssize_t count = pread(static_cast<int>(handle_), buffer.data() + done,
                                    buffer.size() - done, static_cast<off_t>(offset + done));
        if (count == 0) break;
        if (count > 0) {
            done += static_cast<size_t>(count);
        } else if (errno != EINTR) {
            return std::nullopt;
        }
    }
    return done;
}

bool File::WriteAt(uint64_t offset, std::span<const uint8_t> bytes) {
    if (handle_ == -1) return false;
    while (!bytes.empty()) {
        const ssize_t count = pwrite(static_cast<int>(handle_), bytes.data(), bytes.size(),
                                     static_cast<off_t>(offset));
        if (count > 0) {
            bytes = bytes.subspan(static_cast<size_t>(count));
            offset += static_cast<uint64_t>(count);
        } else if (count == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool File::SetEnd(uint64_t size) {
    int result = -1;
    do {
        result = ftruncate(static_cast<int>(handle_), static_cast<off_t>(size));
    } while (result != 0 && errno == EINTR);
    return result == 0;
}

bool File::Close() {
    if (handle_ == -1) return false;
    // Linux gives the number free even if close() is interrupted, so it is never called twice.
    return close(static_cast<int>(std::exchange(handle_, -1))) == 0;
}

}  // namespace bw
