// File by POSIX calls.
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/files.h"
#include "support/flush_file.h"

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

// The word for the call that has just failed. A quota that is used up is a full disk.
std::error_code LastError() {
    return {errno == EDQUOT ? ENOSPC : errno, std::generic_category()};
}

}  // namespace

FileProblem File::LastProblem() const {
    return ProblemOf(name_, LastError());
}

FileResult<File> File::OpenForReading(const std::filesystem::path& path) {
    // O_NONBLOCK: opening a named pipe that nobody writes to must not wait. Plain files ignore it.
    const int handle = Open(path, O_RDONLY | O_NONBLOCK);
    if (handle == -1) return ProblemOf(path, LastError());
    return File(handle, path.native());
}

FileResult<File> File::Create(const std::filesystem::path& path) {
    const int handle = Open(path, O_RDWR | O_CREAT | O_TRUNC);
    if (handle == -1) return ProblemOf(path, LastError());
    return File(handle, path.native());
}

FileResult<File> File::CreateNew(const std::filesystem::path& path) {
    const int handle = Open(path, O_RDWR | O_CREAT | O_EXCL);
    if (handle == -1) return ProblemOf(path, LastError());
    return File(handle, path.native());
}

FileResult<File> File::OpenForWriting(const std::filesystem::path& path) {
    const int handle = Open(path, O_WRONLY | O_NONBLOCK);
    if (handle == -1) return ProblemOf(path, LastError());
    return File(handle, path.native());
}

FileResult<uint64_t> File::Size() const {
    struct stat status {};
    if (fstat(static_cast<int>(handle_), &status) != 0) return LastProblem();
    return static_cast<uint64_t>(status.st_size);
}

FileResult<size_t> File::ReadAt(uint64_t offset, std::span<uint8_t> buffer) const {
    size_t done = 0;
    while (done < buffer.size()) {
        const ssize_t count = pread(static_cast<int>(handle_), buffer.data() + done,
                                    buffer.size() - done, static_cast<off_t>(offset + done));
        if (count == 0) break;
        if (count > 0) {
            done += static_cast<size_t>(count);
        } else if (errno != EINTR) {
            return LastProblem();
        }
    }
    return done;
}

FileResult<> File::WriteAt(uint64_t offset, std::span<const uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = pwrite(static_cast<int>(handle_), bytes.data(), bytes.size(),
                                     static_cast<off_t>(offset));
        if (count > 0) {
            bytes = bytes.subspan(static_cast<size_t>(count));
            offset += static_cast<uint64_t>(count);
        } else if (count == 0) {
            return FileProblem{.file = name_, .kind = FileProblem::Kind::kCutShort};
        } else if (errno != EINTR) {
            return LastProblem();
        }
    }
    return {};
}

FileResult<> File::SetEnd(uint64_t size) {
    int result = -1;
    do {
        result = ftruncate(static_cast<int>(handle_), static_cast<off_t>(size));
    } while (result != 0 && errno == EINTR);
    if (result != 0) return LastProblem();
    return {};
}

FileResult<> FlushFile(const std::filesystem::path& path) {
    const int handle = Open(path, O_RDONLY | O_NONBLOCK);
    if (handle == -1) return ProblemOf(path, LastError());
    FileResult<> flushed;
    if (fsync(handle) != 0) flushed = ProblemOf(path, LastError());
    close(handle);
    return flushed;
}

FileResult<FileLock> FileLock::TryTake(const std::filesystem::path& path) {
    FileLock lock(Open(path, O_RDONLY | O_NONBLOCK | O_NOFOLLOW));
    if (lock.handle_ == -1 || flock(static_cast<int>(lock.handle_), LOCK_EX | LOCK_NB) != 0) {
        return ProblemOf(path, LastError());
    }
    return lock;
}

void FileLock::Release() {
    if (handle_ != -1) close(static_cast<int>(std::exchange(handle_, -1)));
}

FileResult<> File::Close() {
    if (handle_ == -1) return ProblemOf(name_, std::errc::bad_file_descriptor);
    // Linux gives the number free even if close() is interrupted, so it is never called twice.
    if (close(static_cast<int>(std::exchange(handle_, -1))) != 0) return LastProblem();
    return {};
}

void File::TakePermissions(const std::filesystem::path& from) {
    struct stat status {};
    if (stat(from.c_str(), &status) == 0) fchmod(static_cast<int>(handle_), status.st_mode & 07777);
}

}  // namespace bw
