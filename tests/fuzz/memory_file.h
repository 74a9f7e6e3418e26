// A file of a fuzz target's input.
#pragma once

#include <filesystem>
#include <iterator>
#include <span>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

#include "fuzz.h"

// A file in memory, by a path that any reader can open.
class MemoryFile {
  public:
    explicit MemoryFile(std::span<const uint8_t> bytes)
        : descriptor_(memfd_create("input", MFD_CLOEXEC)) {
        Expect(descriptor_ >= 0);
        Expect(bytes.empty() ||
               write(descriptor_, bytes.data(), bytes.size()) == std::ssize(bytes));
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { close(descriptor_); }
    // Lengthens the file by zeros, which take no memory.
    void Lengthen(uint64_t size) const {
        Expect(ftruncate(descriptor_, static_cast<off_t>(size)) == 0);
    }
    void WriteAt(uint64_t offset, std::span<const uint8_t> bytes) const {
        Expect(pwrite(descriptor_, bytes.data(), bytes.size(), static_cast<off_t>(offset)) ==
               std::ssize(bytes));
    }
    std::filesystem::path Path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

  private:
    int descriptor_;
};
