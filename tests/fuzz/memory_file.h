// A file of a fuzz target's input.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

// A file in memory, by a path that any reader can open.
class MemoryFile {
  public:
    explicit MemoryFile(std::span<const uint8_t> bytes);
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile();
    // Lengthens the file by zeros, which take no memory.
    void Lengthen(uint64_t size) const;
    void WriteAt(uint64_t offset, std::span<const uint8_t> bytes) const;
    const std::filesystem::path& Path() const { return path_; }

  private:
    intptr_t handle_;
    std::filesystem::path path_;
};
