#include <algorithm>
#include <filesystem>
#include <set>
#include <span>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "assembler/assembler.h"
#include "common/game_image.h"

// Each cases/NAME.asm is one small feature; its comments say what is to be seen. Beside it lie the
// expected ROM (NAME.rom) and the expected messages (NAME.msg); a missing file means that there
// must be none. A ROM is written as its header fields, then rows of 16 bytes by bank and offset;
// rows of nothing but $FF are left out. Files included by cases end in .inc.

namespace bw::assembler {
namespace {

namespace fs = std::filesystem;

const fs::path kCases = fs::path(BANKWEAVER_TEST_DATA) / "cases";

std::string RomText(const std::vector<uint8_t>& rom) {
    if (rom.empty()) return "";
    std::string text = fmt::format("prg {} chr {} flags {:02X} {:02X} size {}\n", rom[4], rom[5],
                                   rom[6], rom[7], rom.size());
    for (size_t row = 0; 16 + row + 16 <= rom.size(); row += 16) {
        const auto bytes = std::span(rom).subspan(16 + row, 16);
        if (std::ranges::count(bytes, 0xFF) == 16) continue;
        text += fmt::format("{:02X}:{:04X} {:02X}\n", row / 0x2000, row % 0x2000,
                            fmt::join(bytes, " "));
    }
    return text;
}

std::set<std::string> CaseNames() {
    std::set<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(kCases)) {
        if (entry.path().extension() == ".asm") names.insert(entry.path().stem().string());
    }
    return names;
}

class Golden : public testing::TestWithParam<std::string> {};

TEST_P(Golden, GivesItsRomAndMessages) {
    fs::current_path(kCases);  // includes start there
    DiskSourceProvider source;
    const AssemblyResult result = Assemble(GetParam() + ".asm", source);
    EXPECT_EQ(FormatDiagnostics(result), test::ReadText(GetParam() + ".msg"));
    EXPECT_EQ(RomText(result.rom), test::ReadText(GetParam() + ".rom"));
}

INSTANTIATE_TEST_SUITE_P(Cases, Golden, testing::ValuesIn(CaseNames()),
                         [](const auto& test) { return test.param; });

}  // namespace
}  // namespace bw::assembler
