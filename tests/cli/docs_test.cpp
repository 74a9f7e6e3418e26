// What the pages tell is what the program does.
#include <fstream>
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
    const std::vector<std::vector<const char*>> commands{{"info"},
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

// The examples of a page, one command each, ready for a shell in the test's folder.
std::vector<std::string> Examples(const fs::path& page) {
    static const std::regex synopsis(" INPUT| CART( DUMP)?$| FILE$|FILE\\.fcm|\\./run +[^biel]");
    static const std::regex example("^    (.*(bankweaver-cli|nesasm|\\./run) [a-z].*|sed -i .*)");
    std::vector<std::string> commands;
    std::ifstream text(page);
    for (std::string line; std::getline(text, line);) {
        const bool continues = !commands.empty() && commands.back().ends_with('\\');
        if (continues) {
            commands.back().back() = ' ';
            commands.back() += line;
        } else if (std::regex_search(line, example) && !std::regex_search(line, synopsis) &&
                   line.find("cmake ") == line.npos && line.find("builds Bank") == line.npos) {
            commands.push_back(line.substr(4));
        }
    }
    for (std::string& command : commands) {
        command = std::regex_replace(command, std::regex("   +a .*$"), "");
        command = std::regex_replace(command, std::regex("GAMES"), "games");
        command = std::regex_replace(
            command, std::regex("\\./run|build/release/bin/bankweaver-cli"), "bankweaver-cli");
    }
    return commands;
}

TEST_F(Commands, ExamplesOfThePagesWork) {
    for (const char* name : {"games/one.nes", "homebrew/one.nes", "homebrew/b/two.nes"})
        Image(name, {2, 1, 0}, 3);
    Image("homebrew/c.nes", {8, 0, 2});  // for COOLGIRL alone
    Image("menu.nes", {8, 0, 4});
    Done("design convert --save design=my_design --save background-tiles=font");
    for (const char* design : {"old.fcm", "their.fcm"})
        fs::copy(folder_ / "my_design.fcm", folder_ / design);
    for (const char* picture : {"picture", "logo"})
        Done("design render my_design.fcm --scale 1 -o "s + picture);
    Done("design unpack my_design.fcm -d my_design");
    Done("list -o games games");
    Done("list -o collection games");
    Done("build -o burned.bin collection.fcl");
    WriteText(folder_ / "nes.dat", "clrmamepro ( name games )");
    for (const char* source : {"menu.asm", "tables.asm"}) {
        const fs::path file = kSource / "samples/external_menu" / source;
        fs::create_directories(folder_ / "mine");
        fs::copy(file, folder_ / source);
        fs::copy(file, folder_ / "mine" / source);
    }
    fs::create_directories(folder_ / "build/release");
    fs::create_directories(folder_ / "out");
    fs::create_directory_symlink(BANKWEAVER_SAMPLES, folder_ / "build/release/samples");
    Done("build --board coolgirl -o out/samples.nes build/release/samples/samples.fcl");
    WriteText(folder_ / "home/jq", "#!/bin/sh\ncat\n");
    fs::permissions(folder_ / "home/jq", fs::perms::owner_all);
    const std::string shell = "cd '" + folder_.Path().string() + "' && export LC_ALL=C HOME=$PWD " +
                              "BANKWEAVER_HOME=$PWD/home PATH='" +
                              fs::path(BANKWEAVER_CLI).parent_path().string() +
                              "':$PWD/home:$PATH; ";
    size_t run = 0;
    for (const char* page :
         {"README.md", "docs/cli.md", "docs/console.md", "docs/designs.md",
          "docs/external_menus.md", "docs/menu.md", "docs/music.md", "samples/README.md"}) {
        for (const std::string& command : Examples(kSource / page)) {
            const std::string line = shell + "(" + command + ") > stdout.txt 2>&1 < /dev/null";
            EXPECT_EQ(std::system(line.c_str()), 0)
                << page << ": " << command << "\n"
                << ReadText(folder_ / "stdout.txt").substr(0, 500);
            ++run;
        }
    }
    EXPECT_GT(run, 20u);
}

}  // namespace
}  // namespace bw
