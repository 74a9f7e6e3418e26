#include <algorithm>
#include <cstring>

#include "assembler/source_provider.h"
#include "support/windows_path.h"

namespace bw::assembler {
namespace {

constexpr DWORD kLargestStep = 1u << 30;  // a call takes 32 bits of length

class OpenFile {
  public:
    explicit OpenFile(const std::wstring& path)
        : handle_(CreateFileW(path.c_str(), GENERIC_READ,
                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)) {}
    ~OpenFile() {
        if (handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    HANDLE Handle() const { return handle_; }
    // Names such as NUL and CON are devices in every folder.
    bool IsFile() const {
        return handle_ != INVALID_HANDLE_VALUE && GetFileType(handle_) == FILE_TYPE_DISK;
    }

  private:
    HANDLE handle_;
};

SourceBytes ReadFile(const std::wstring& path, size_t limit) {
    SourceBytes result;
    const OpenFile file(path);
    LARGE_INTEGER size{};
    if (!file.IsFile() || !GetFileSizeEx(file.Handle(), &size)) return result;
    result.size = static_cast<size_t>(size.QuadPart);
    if (result.size > limit) {
        result.status = ReadStatus::TooLarge;
        return result;
    }
    result.bytes = std::make_unique_for_overwrite<char[]>(result.size + kSourcePadding);
    size_t have = 0;
    while (have < result.size) {
        DWORD got = 0;
        const auto step = static_cast<DWORD>(std::min<size_t>(result.size - have, kLargestStep));
        if (!::ReadFile(file.Handle(), result.bytes.get() + have, step, &got, nullptr)) return {};
        if (got == 0) break;  // cut while it was read: what is there counts
        have += got;
    }
    result.size = have;
    std::memset(result.bytes.get() + have, 0, kSourcePadding);
    result.status = ReadStatus::Ok;
    return result;
}

}  // namespace

// The system takes slashes and backslashes alike.
SourceBytes DiskSourceProvider::Read(std::string_view path, size_t limit) {
    if (path.find('\0') != std::string_view::npos) return {};
    return ReadFile(CallPath(WideOf(path)), limit);
}

}  // namespace bw::assembler
