// A folder for one test with the images that it puts there.
#pragma once

#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>

#include "common/game_image.h"
#include "common/temporary_folder.h"

namespace bw::test {

class ImageFolder : public TemporaryFolder {
  public:
    // Makes missing folders too. Gives the whole path.
    std::filesystem::path Write(std::string_view name, std::string_view bytes) const {
        std::filesystem::path file = Path() / name;
        std::filesystem::create_directories(file.parent_path());
        WriteText(file, bytes);
        return file;
    }
};

// The header bytes behind the magic; the rest of the 16 are zeros.
inline std::string Header(std::initializer_list<int> bytes) {
    std::string header = "NES\x1A";
    for (const int byte : bytes)
        header += static_cast<char>(byte);
    header.resize(16);
    return header;
}

}  // namespace bw::test
