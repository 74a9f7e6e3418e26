// File by Windows calls.
#include <algorithm>
#include <utility>

#include "support/files.h"
#include "support/flush_file.h"
#include "support/windows_api.h"

namespace bw {
namespace {

constexpr DWORD kLargestStep = 1u << 30;  // a call takes 32 bits of length

HANDLE AsHandle(intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

intptr_t Open(const std::filesystem::path& path, DWORD access, DWORD disposition) {
    const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return reinterpret_cast<intptr_t>(CreateFileW(path.c_str(), access, share, nullptr, disposition,
                                                  FILE_ATTRIBUTE_NORMAL, nullptr));
}

OVERLAPPED At(uint64_t offset) {
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return place;
}

DWORD Step(size_t size) {
    return static_cast<DWORD>(std::min<size_t>(size, kLargestStep));
}

// The word for the call that has just failed.
std::error_code LastError() {
    return {static_cast<int>(GetLastError()), std::system_category()};
}

// Opening a folder is refused as if it were a matter of permission.
FileProblem OpenProblem(const std::filesystem::path& path) {
    const std::error_code answer = LastError();
    std::error_code error;
    return std::filesystem::is_directory(path, error) ? ProblemOf(path, std::errc::is_a_directory)
                                                      : ProblemOf(path, answer);
}

}  // namespace

FileProblem File::LastProblem() const {
    return ProblemOf(name_, LastError());
}

FileResult<File> File::OpenForReading(const std::filesystem::path& path) {
    const intptr_t handle = Open(path, GENERIC_READ, OPEN_EXISTING);
    if (handle == -1) return OpenProblem(path);
    return File(handle, path.native());
}

FileResult<File> File::Create(const std::filesystem::path& path) {
    const intptr_t handle = Open(path, GENERIC_READ | GENERIC_WRITE, CREATE_ALWAYS);
    if (handle == -1) return OpenProblem(path);
    return File(handle, path.native());
}

FileResult<File> File::CreateNew(const std::filesystem::path& path) {
    const intptr_t handle = Open(path, GENERIC_READ | GENERIC_WRITE, CREATE_NEW);
    if (handle == -1) return OpenProblem(path);
    return File(handle, path.native());
}

FileResult<File> File::OpenForWriting(const std::filesystem::path& path) {
    const intptr_t handle = Open(path, GENERIC_WRITE, OPEN_EXISTING);
    if (handle == -1) return OpenProblem(path);
    return File(handle, path.native());
}

FileResult<uint64_t> File::Size() const {
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(AsHandle(handle_), &size)) return LastProblem();
    return static_cast<uint64_t>(size.QuadPart);
}

FileResult<size_t> File::ReadAt(uint64_t offset, std::span<uint8_t> buffer) const {
    size_t done = 0;
    while (done < buffer.size()) {
        OVERLAPPED place = At(offset + done);
        DWORD count = 0;
        if (!::ReadFile(AsHandle(handle_), buffer.data() + done, Step(buffer.size() - done), &count,
                        &place)) {
            if (GetLastError() == ERROR_HANDLE_EOF) break;
            return LastProblem();
        }
        if (count == 0) break;
        done += count;
    }
    return done;
}

FileResult<> File::WriteAt(uint64_t offset, std::span<const uint8_t> bytes) {
    while (!bytes.empty()) {
        OVERLAPPED place = At(offset);
        DWORD count = 0;
        const BOOL written =
            ::WriteFile(AsHandle(handle_), bytes.data(), Step(bytes.size()), &count, &place);
        if (!written) return LastProblem();
        if (count == 0) return FileProblem{.file = name_, .kind = FileProblem::Kind::kCutShort};
        bytes = bytes.subspan(count);
        offset += count;
    }
    return {};
}

FileResult<> File::SetEnd(uint64_t size) {
    LARGE_INTEGER end{};
    end.QuadPart = static_cast<LONGLONG>(size);
    if (!SetFilePointerEx(AsHandle(handle_), end, nullptr, FILE_BEGIN) ||
        !SetEndOfFile(AsHandle(handle_))) {
        return LastProblem();
    }
    return {};
}

// Folders can't be claimed.
FileResult<> FlushFile(const std::filesystem::path& path) {
    const intptr_t handle = Open(path, GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING);
    if (handle == -1) return OpenProblem(path);
    FileResult<> flushed;
    if (FlushFileBuffers(AsHandle(handle)) == 0) flushed = ProblemOf(path, LastError());
    CloseHandle(AsHandle(handle));
    return flushed;
}

FileResult<FileLock> FileLock::TryTake(const std::filesystem::path& path) {
    FileLock lock(Open(path, GENERIC_READ, OPEN_EXISTING));
    if (lock.handle_ == -1) return OpenProblem(path);
    OVERLAPPED place = At(uint64_t{1} << 62);  // behind all data, which stays free to be written
    const DWORD flags = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
    if (LockFileEx(AsHandle(lock.handle_), flags, 0, 1, 0, &place) != 0) return lock;
    if (GetLastError() == ERROR_LOCK_VIOLATION) {
        return ProblemOf(path, std::errc::operation_would_block);
    }
    return ProblemOf(path, LastError());
}

void FileLock::Release() {
    if (handle_ != -1) CloseHandle(AsHandle(std::exchange(handle_, -1)));
}

FileResult<> File::Close() {
    if (handle_ == -1) return ProblemOf(name_, std::errc::bad_file_descriptor);
    if (!CloseHandle(AsHandle(std::exchange(handle_, -1)))) return LastProblem();
    return {};
}

}  // namespace bw
