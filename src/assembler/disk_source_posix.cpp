#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "assembler/source_provider.h"

namespace bw::assembler {
namespace {

class OpenFile {
  public:
    // Without O_NONBLOCK the open of a pipe would wait for a writer.
    explicit OpenFile(const std::string& path)
        : handle_(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
    ~OpenFile() {
        if (handle_ >= 0) ::close(handle_);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    int Handle() const { return handle_; }

  private:
    int handle_;
};

SourceBytes ReadFile(const std::string& path, size_t limit) {
    SourceBytes result;
    const OpenFile file(path);
    struct stat info {};
    if (file.Handle() < 0 || ::fstat(file.Handle(), &info) != 0 || !S_ISREG(info.st_mode)) {
        return result;
    }
    result.size = static_cast<size_t>(info.st_size);
    if (result.size > limit) {
        result.status = ReadStatus::TooLarge;
        return result;
    }
    result.bytes = std::make_unique_for_overwrite<char[]>(result.size + kSourcePadding);
    size_t have = 0;
    while (have < result.size) {
        const ssize_t got = ::read(file.Handle(), result.bytes.get() + have, result.size - have);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return {};
        if (got == 0) break;  // cut while it was read: what is there counts
        have += static_cast<size_t>(got);
    }
    result.size = have;
    std::memset(result.bytes.get() + have, 0, kSourcePadding);
    result.status = ReadStatus::Ok;
    return result;
}

}  // namespace

SourceBytes DiskSourceProvider::Read(std::string_view path, size_t limit) {
    if (path.find('\0') != std::string_view::npos) return {};
    std::string name(path);
    SourceBytes result = ReadFile(name, limit);
    if (result.status == ReadStatus::CanNotOpen && name.find('\\') != std::string::npos) {
        std::replace(name.begin(), name.end(), '\\', '/');
        result = ReadFile(name, limit);
    }
    return result;
}

}  // namespace bw::assembler
