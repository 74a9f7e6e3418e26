#include "assembler/source_files.h"

#include "assembler/assembler.h"

namespace bw::assembler {

uint32_t SourceFiles::Open(std::string_view path) {
    // A menu has some dozens of files; a walk along their names is as quick as anything.
    for (size_t i = 0; i < files_.size(); ++i) {
        if (files_[i].name == path) return static_cast<uint32_t>(i);
    }
    File& file = files_.emplace_back();
    file.name = path;
    file.content = provider_.Read(path, kTextLimit);
    if (file.content.status == ReadStatus::Ok) {
        char* bytes = file.content.bytes.get();
        size_t size = file.content.size;
        if (size == 0 || bytes[size - 1] != '\n') bytes[size++] = '\n';
        file.text = {bytes, size};
        constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
        if (file.text.starts_with(kByteOrderMark)) file.text.remove_prefix(kByteOrderMark.size());
    }
    return static_cast<uint32_t>(files_.size() - 1);
}

}  // namespace bw::assembler
