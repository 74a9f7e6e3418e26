#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "assembler/source_provider.h"

namespace bw::assembler {

// The source files of an assembly: each is read once, however often it is included or run over.
// Texts and names keep their address.
class SourceFiles {
  public:
    struct File {
        std::string name;
        SourceBytes content;  // the text ends in a line feed that is added if it's missing
        std::string_view text;
    };

    explicit SourceFiles(SourceProvider& provider) : provider_(provider) {}

    // The index of the file, read now if it is new. Its status tells whether there is a text.
    uint32_t Open(std::string_view path);
    const File& At(uint32_t index) const { return files_[index]; }

    // Bytes for an INCBIN; not kept.
    SourceBytes ReadBinary(std::string_view path, size_t limit) {
        return provider_.Read(path, limit);
    }

  private:
    SourceProvider& provider_;
    std::deque<File> files_;
};

}  // namespace bw::assembler
