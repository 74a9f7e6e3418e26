#include "builder/assembler_call.h"

namespace bw {

AssemblerCall CallOf(const std::filesystem::path& source, const std::filesystem::path& folder) {
    return {{source.string()}, folder};
}

}  // namespace bw
