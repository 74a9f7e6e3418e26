#include <stdexcept>

#include <sys/stat.h>

#include "common/special_files.h"

namespace bw::test {

std::vector<std::filesystem::path> SpecialFiles(const std::filesystem::path& folder) {
    if (mkfifo((folder / "pipe").c_str(), 0600) != 0) throw std::runtime_error("no pipe");
    return {folder / "pipe", "/dev/zero"};
}

void MakeOlder(const std::filesystem::path& path, std::chrono::hours age) {
    last_write_time(path, std::filesystem::file_time_type::clock::now() - age);
}

}  // namespace bw::test
