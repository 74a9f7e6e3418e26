// A folder for one test with the images that it puts there.
#pragma once

#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>

#include "common/temporary_folder.h"

namespace bw::test {

class ImageFolder : public TemporaryFolder {
  public:
    // Makes missing folders too. Gives the whole path.
    std::filesystem::path Write(std::string_view name, std::string_view bytes) const {
        std::filesystem::path file = Path() / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return file;
    }
};

inline std::string ReadText(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

// The header bytes behind the magic; the rest of the 16 are zeros.
inline std::string Header(std::initializer_list<int> bytes) {
    std::string header = "NES\x1A";
    for (const int byte : bytes)
        header += static_cast<char>(byte);
    header.resize(16);
    return header;
}

}  // namespace bw::test
