#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "assembler/assembler.h"

// Each cases/NAME.asm is one small feature; its comments say what is to be seen. Beside it lie the
// expected ROM (NAME.rom) and the expected messages (NAME.msg); a missing file means that there
// must be none. A ROM is written as its header fields, then rows of 16 bytes by bank and offset;
// rows of nothing but $FF are left out. Files included by cases end in .inc.

namespace bw::assembler {
namespace {

namespace fs = std::filesystem;

const fs::path kCases = fs::path(BANKWEAVER_TEST_DATA) / "cases";

class CaseFolder : public SourceProvider {
  public:
    SourceBytes Read(std::string_view path, std::size_t limit) override {
        return disk_.Read((kCases / path).string(), limit);
    }

  private:
    DiskSourceProvider disk_;
};

std::string TextOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string RomText(const std::vector<std::uint8_t>& rom) {
    if (rom.empty()) return "";
    char text[64];
    std::snprintf(text, sizeof text, "prg %d chr %d flags %02X %02X size %zu\n", rom[4], rom[5],
                  rom[6], rom[7], rom.size());
    std::string result = text;
    for (std::size_t row = 16; row + 16 <= rom.size(); row += 16) {
        const auto begin = rom.begin() + static_cast<std::ptrdiff_t>(row);
        if (std::all_of(begin, begin + 16, [](std::uint8_t byte) { return byte == 0xFF; }))
            continue;
        std::snprintf(text, sizeof text, "%02zX:%04zX", (row - 16) / 0x2000, (row - 16) % 0x2000);
        result += text;
        for (std::size_t i = 0; i < 16; ++i) {
            std::snprintf(text, sizeof text, " %02X", rom[row + i]);
            result += text;
        }
        result += "\n";
    }
    return result;
}

std::vector<std::string> CaseNames() {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(kCases)) {
        if (entry.path().extension() == ".asm") names.push_back(entry.path().stem().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

class Golden : public testing::TestWithParam<std::string> {};

TEST_P(Golden, GivesItsRomAndMessages) {
    const std::string& name = GetParam();
    CaseFolder source;
    const AssemblyResult result = Assemble(name + ".asm", source);
    EXPECT_EQ(FormatDiagnostics(result), TextOf(kCases / (name + ".msg")));
    EXPECT_EQ(RomText(result.rom), TextOf(kCases / (name + ".rom")));
}

INSTANTIATE_TEST_SUITE_P(Cases, Golden, testing::ValuesIn(CaseNames()),
                         [](const auto& test) { return test.param; });

TEST(GoldenFolder, EachExpectationHasItsCase) {
    const std::vector<std::string> names = CaseNames();
    EXPECT_GE(names.size(), 15U);
    for (const fs::directory_entry& entry : fs::directory_iterator(kCases)) {
        const std::string extension = entry.path().extension().string();
        if (extension == ".inc") continue;
        EXPECT_TRUE(std::binary_search(names.begin(), names.end(), entry.path().stem().string()))
            << entry.path();
    }
}

}  // namespace
}  // namespace bw::assembler
