// File by Windows calls.
#include <algorithm>
#include <utility>

#include "support/file_queries.h"
#include "support/files.h"
#include "support/flush_file.h"
#include "support/windows_error.h"
#include "support/windows_path.h"
#include "support/windows_patience.h"

namespace bw {
namespace {

constexpr DWORD kLargestStep = 1u << 30;  // a call takes 32 bits of length

HANDLE AsHandle(intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

// A file that is to be written may be open for a moment in what looks into every new file.
FileResult<intptr_t> Open(const std::filesystem::path& path, DWORD access, DWORD disposition) {
    const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const std::wstring name = CallPath(path.native());
    HANDLE handle = INVALID_HANDLE_VALUE;
    const bool opened = WithPatience(
        [&] {
            handle = CreateFileW(name.c_str(), access, share, nullptr, disposition,
                                 FILE_ATTRIBUTE_NORMAL, nullptr);
            return handle != INVALID_HANDLE_VALUE;
        },
        [&](DWORD error) { return error == ERROR_SHARING_VIOLATION && access != GENERIC_READ; });
    if (!opened) return LastFileProblem(path);
    return reinterpret_cast<intptr_t>(handle);
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

}  // namespace

FileProblem File::LastProblem() const {
    return LastFileProblem(name_);
}

FileResult<File> File::OpenForReading(const std::filesystem::path& path) {
    const FileResult<intptr_t> handle = Open(path, GENERIC_READ, OPEN_EXISTING);
    if (!handle) return handle.Problem();
    return File(*handle, path.native());
}

FileResult<File> File::Create(const std::filesystem::path& path) {
    const FileResult<intptr_t> handle = Open(path, GENERIC_READ | GENERIC_WRITE, CREATE_ALWAYS);
    if (!handle) return handle.Problem();
    return File(*handle, path.native());
}

FileResult<File> File::CreateNew(const std::filesystem::path& path) {
    const FileResult<intptr_t> handle = Open(path, GENERIC_READ | GENERIC_WRITE, CREATE_NEW);
    if (!handle) return handle.Problem();
    return File(*handle, path.native());
}

FileResult<File> File::OpenForWriting(const std::filesystem::path& path) {
    const FileResult<intptr_t> handle = Open(path, GENERIC_WRITE, OPEN_EXISTING);
    if (!handle) return handle.Problem();
    return File(*handle, path.native());
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

FileResult<> FlushFile(const std::filesystem::path& path) {
    const FileResult<intptr_t> handle = Open(path, GENERIC_WRITE, OPEN_EXISTING);
    if (!handle) return handle.Problem();
    FileResult<> flushed;
    if (FlushFileBuffers(AsHandle(*handle)) == 0) flushed = LastFileProblem(path);
    CloseHandle(AsHandle(*handle));
    return flushed;
}

namespace {

// Folders have no locks. A file beside one stands for it, which the system removes with its handle.
FileResult<intptr_t> ClaimFolder(const std::filesystem::path& folder) {
    const HANDLE beside = CreateFileW(
        CallPath(folder.native() + L".lock").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
        FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (beside != INVALID_HANDLE_VALUE) return reinterpret_cast<intptr_t>(beside);
    const DWORD error = GetLastError();
    return error == ERROR_SHARING_VIOLATION ? ProblemOf(folder, std::errc::operation_would_block)
                                            : FileProblemOf(folder, error);
}

}  // namespace

FileResult<FileLock> FileLock::TryTake(const std::filesystem::path& path) {
    if (IsFolder(path)) {
        const FileResult<intptr_t> claim = ClaimFolder(path);
        if (!claim) return claim.Problem();
        return FileLock(*claim);
    }
    const FileResult<intptr_t> handle = Open(path, GENERIC_READ, OPEN_EXISTING);
    if (!handle) return handle.Problem();
    FileLock lock(*handle);
    OVERLAPPED place = At(uint64_t{1} << 62);  // behind all data, which stays free to be written
    const DWORD flags = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
    if (LockFileEx(AsHandle(lock.handle_), flags, 0, 1, 0, &place) != 0) return lock;
    return LastFileProblem(path);
}

void FileLock::Release() {
    if (handle_ != -1) CloseHandle(AsHandle(std::exchange(handle_, -1)));
}

FileResult<> File::Close() {
    if (handle_ == -1) return ProblemOf(name_, std::errc::bad_file_descriptor);
    if (!CloseHandle(AsHandle(std::exchange(handle_, -1)))) return LastProblem();
    return {};
}

// What may be replaced may be written, and that is all that the attributes say.
void File::TakePermissions(const std::filesystem::path&) {}

}  // namespace bw
