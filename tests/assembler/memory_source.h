#pragma once

#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "assembler/assembler.h"

namespace bw::assembler {

// Files in memory.
class MemorySource : public SourceProvider {
  public:
    std::map<std::string, std::string, std::less<>> files;

    SourceBytes Read(std::string_view path, size_t limit) override {
        SourceBytes result;
        const auto file = files.find(path);
        if (file == files.end()) return result;
        result.size = file->second.size();
        result.status = result.size > limit ? ReadStatus::TooLarge : ReadStatus::Ok;
        if (result.status != ReadStatus::Ok) return result;
        // Of the exact size, so that a look beyond the padding is caught.
        result.bytes = std::make_unique<char[]>(result.size + kSourcePadding);
        std::memcpy(result.bytes.get(), file->second.data(), result.size);
        return result;
    }
};

inline AssemblyResult AssembleText(std::string text, const AssemblyOptions& options = {}) {
    MemorySource source;
    source.files["a.asm"] = std::move(text);
    return Assemble("a.asm", source, options);
}

// The ROM's bytes behind the header, up to `count`.
inline std::vector<int> RomBytes(const AssemblyResult& result, size_t count) {
    std::vector<int> bytes;
    for (size_t i = 16; i < result.rom.size() && bytes.size() < count; ++i)
        bytes.push_back(result.rom[i]);
    return bytes;
}

// The texts of all diagnostics, one per line, with their line numbers.
inline std::string Messages(const AssemblyResult& result) {
    std::string text;
    for (const Diagnostic& diagnostic : result.diagnostics)
        text += std::to_string(diagnostic.place.line) + ": " + diagnostic.text + "\n";
    return text;
}

}  // namespace bw::assembler
