#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

#include "nesasm/output_file.h"

namespace bw::nesasm {
namespace {

bool WriteAll(int file, const char* bytes, size_t size) {
    while (size != 0) {
        const ssize_t done = ::write(file, bytes, size);
        if (done < 0 && errno == EINTR) continue;
        if (done <= 0) return false;
        bytes += done;
        size -= static_cast<size_t>(done);
    }
    return true;
}

}  // namespace

bool ReplaceFile(const std::string& path, const void* bytes, size_t size) {
    const std::string temporary = path + "." + std::to_string(::getpid()) + ".tmp";
    const int file = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0) return false;
    bool done = WriteAll(file, static_cast<const char*>(bytes), size);
    done = ::close(file) == 0 && done;
    done = done && std::rename(temporary.c_str(), path.c_str()) == 0;
    if (!done) ::unlink(temporary.c_str());
    return done;
}

}  // namespace bw::nesasm
