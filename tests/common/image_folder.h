// A folder for one test with the images that it puts there.
#pragma once

#include <filesystem>
#include <string_view>

#include "common/game_image.h"
#include "common/temporary_folder.h"
#include "support/text.h"

namespace bw::test {

class ImageFolder : public TemporaryFolder {
  public:
    // `name` is in bytes, on Windows UTF-8. Makes missing folders too. Gives the whole path.
    std::filesystem::path Write(std::string_view name, std::string_view bytes) const {
        std::filesystem::path file = (Path() / TextPath(BytesToWide(name))).make_preferred();
        std::filesystem::create_directories(file.parent_path());
        WriteText(file, bytes);
        return file;
    }
};

}  // namespace bw::test
