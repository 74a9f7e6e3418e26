#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace bw::assembler {

enum class ReadStatus { Ok, CanNotOpen, TooLarge };

// The bytes of one file. Behind the `size` bytes of content stand kSourcePadding bytes that belong
// to the buffer too, so that a scanner may look ahead without asking for the end.
struct SourceBytes {
    ReadStatus status = ReadStatus::CanNotOpen;
    std::unique_ptr<char[]> bytes;
    size_t size = 0;
};

inline constexpr size_t kSourcePadding = 16;

// Where the assembler gets its files from. A path is what stands between the quotes of an INCLUDE
// or INCBIN, or the main source's name.
class SourceProvider {
  public:
    virtual ~SourceProvider() = default;

    // Gives the file's content, or TooLarge (with `size` set, nothing read) above `limit` bytes.
    virtual SourceBytes Read(std::string_view path, size_t limit) = 0;
};

// Reads from the disk; relative paths start at the current working folder. A path with backslashes
// that can't be opened is tried again with slashes, as sources come from both kinds of system.
// Refuses everything but regular files: a device or a pipe has no end to rely on.
class DiskSourceProvider : public SourceProvider {
  public:
    SourceBytes Read(std::string_view path, size_t limit) override;
};

}  // namespace bw::assembler
