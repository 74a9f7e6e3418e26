// What the pages tell is what the program does.
#include <regex>
#include <set>

#include "builder/layout/build_checks.h"
#include "cli/arguments.h"
#include "cli/command_fixture.h"
#include "rom/board_tables.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

const fs::path kSource = BANKWEAVER_SOURCE;

std::set<std::string> Matches(const std::string& text, const std::string& pattern) {
    const std::regex word(pattern);
    return {std::sregex_token_iterator(text.begin(), text.end(), word, 1), {}};
}

TEST(Docs, PageManualAndCompletionHaveTheOptionsOfTheHelp) {
    std::set<std::string> options;
    const std::vector<std::vector<std::string>> commands{{"info"},
                                                         {"build"},
                                                         {"export"},
                                                         {"list"},
                                                         {"split"},
                                                         {"compare"},
                                                         {"play"},
                                                         {"check"},
                                                         {"design", "pack"},
                                                         {"design", "unpack"},
                                                         {"design", "info"},
                                                         {"design", "check"},
                                                         {"design", "render"},
                                                         {"design", "convert"},
                                                         {"design", "import-picture"}};
    for (std::vector<std::string> words : commands) {
        words.insert(words.begin(), "help");
        const std::string help = ParseArguments(words).text;
        options.merge(Matches(help, "--([a-z][a-z-]+)"));
    }
    EXPECT_GT(options.size(), 28u);
    const std::string page = ReadText(kSource / "docs/cli.md");
    const std::string manual = ReadText(kSource / "packaging/man/bankweaver-cli.1");
    const std::string completion = ReadText(kSource / "packaging/completions/bankweaver.bash");
    auto named = options;
    named.insert("version");
    EXPECT_EQ(Matches(page, "`--([a-z][a-z-]+)"), named);
    EXPECT_EQ(Matches(manual, "Fl -([a-z][a-z-]+)"), named);
    const auto completed = Matches(completion, "--([a-z][a-z-]+)");
    EXPECT_TRUE(std::ranges::includes(completed, options));
}

// Whether the board takes a game of these sizes, in units of the header.
bool Takes(uint32_t mapper, uint32_t prg, uint32_t chr) {
    MulticartItem item;
    item.valid = 1;
    item.mapper = mapper;
    item.SetPrgCount(prg);
    item.SetChrUnits(chr);
    return FindGameFault(item, BoardType::kCoolgirl) == GameFault::kNone;
}

TEST(Docs, TheTableOfMappersIsThatOfTheBoard) {
    const std::string page = ReadText(kSource / "docs/cli.md");
    const std::regex row(R"(\| (\d+)[^|]*\| (\d+) (K|M)B \| (?:(\d+) KB|CHR RAM only) \|)");
    std::set<uint32_t> mappers;
    for (std::sregex_iterator at(page.begin(), page.end(), row), end; at != end; ++at) {
        const auto mapper = static_cast<uint32_t>(std::stoul((*at)[1]));
        const auto prg = static_cast<uint32_t>(std::stoul((*at)[2])) * ((*at)[3] == "M" ? 64 : 1) /
                         ((*at)[3] == "M" ? 1 : 16);
        const uint32_t chr = (*at)[4].matched ? static_cast<uint32_t>(std::stoul((*at)[4])) / 8 : 0;
        EXPECT_TRUE(Takes(mapper, prg, chr)) << mapper;
        EXPECT_FALSE(Takes(mapper, prg * 2, chr) || Takes(mapper, prg, std::max(chr * 2, 1u)));
        EXPECT_EQ(Takes(mapper, prg, 0), mapper != 5);
        mappers.insert(mapper);
    }
    for (uint32_t mapper = 0; mapper < 256; ++mapper)
        EXPECT_EQ(mappers.contains(mapper), BoardTakesMapper(BoardType::kCoolgirl, mapper))
            << mapper;
}

}  // namespace
}  // namespace bw
