#include <string>

#include <sys/mman.h>
#include <unistd.h>

#include "fuzz.h"
#include "memory_file.h"

MemoryFile::MemoryFile(std::span<const uint8_t> bytes)
    : handle_(memfd_create("input", MFD_CLOEXEC)),
      path_("/proc/self/fd/" + std::to_string(handle_)) {
    Expect(handle_ >= 0);
    if (!bytes.empty()) WriteAt(0, bytes);
}

MemoryFile::~MemoryFile() {
    close(static_cast<int>(handle_));
}

void MemoryFile::Lengthen(uint64_t size) const {
    Expect(ftruncate(static_cast<int>(handle_), static_cast<off_t>(size)) == 0);
}

void MemoryFile::WriteAt(uint64_t offset, std::span<const uint8_t> bytes) const {
    Expect(pwrite(static_cast<int>(handle_), bytes.data(), bytes.size(),
                  static_cast<off_t>(offset)) == std::ssize(bytes));
}
