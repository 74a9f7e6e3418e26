// A folder for one test, gone at its end, and the files that tests put there.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace bw::test {

class TempFolder {
  public:
    TempFolder() {
        std::random_device random;
        do {
            path_ = std::filesystem::canonical(std::filesystem::temp_directory_path()) /
                    ("bankweaver-rom-test-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& Path() const { return path_; }
    std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

    // Makes missing folders too. Gives the whole path.
    std::filesystem::path Write(std::string_view name, std::string_view bytes) const {
        const std::filesystem::path file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return file;
    }

  private:
    std::filesystem::path path_;
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
