#include "common/special_files.h"

namespace bw::test {

// A device's name counts in every folder, with any extension.
std::vector<std::filesystem::path> SpecialFiles(const std::filesystem::path& folder) {
    return {folder / "NUL", folder / "con.nes", "NUL"};
}

}  // namespace bw::test
