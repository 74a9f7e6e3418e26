#include <stdexcept>

#include <sys/stat.h>

#include "common/special_files.h"

namespace bw::test {

std::vector<std::filesystem::path> SpecialFiles(const std::filesystem::path& folder) {
    if (mkfifo((folder / "pipe").c_str(), 0600) != 0) throw std::runtime_error("no pipe");
    return {folder / "pipe", "/dev/zero"};
}

}  // namespace bw::test
