// The pages' examples, which are written for a POSIX shell, work.
#include <fstream>
#include <regex>

#include "cli/shell_fixture.h"

namespace bw {
namespace {

namespace fs = std::filesystem;

const fs::path kSource = BANKWEAVER_SOURCE;

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

TEST_F(ShellCommands, ExamplesOfThePagesWork) {
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
