#include "cli/arguments.h"

#include <regex>
#include <set>
#include <sstream>

#include <gmock/gmock.h>

#include "common/game_image.h"

namespace bw {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

// Of words with blanks between them; '' is an empty one.
ParseResult Parse(const std::string& line) {
    std::istringstream text("bankweaver-cli " + line);
    std::vector<std::string> words;
    for (std::string word; text >> word;)
        words.push_back(word == "''" ? "" : word);
    std::vector<const char*> values;
    for (const std::string& word : words)
        values.push_back(word.c_str());
    return ParseArguments(static_cast<int>(values.size()), values.data());
}

// Menu, page, speed, music, style.
auto Numbers(const BuildSettings& settings) {
    return std::tuple(settings.MenuSize, settings.PageSize, settings.PageTurningSpeed,
                      settings.Music, settings.ShowStyle);
}

TEST(Arguments, DefaultsAreThoseOfAFreshStore) {
    const Arguments arguments = Parse("build -o cart.nes b.nes a.fcl").arguments.value();
    EXPECT_EQ(arguments.command, Command::kBuild);
    EXPECT_THAT(arguments.inputs, ElementsAre("b.nes", "a.fcl"));
    EXPECT_EQ(arguments.board, BoardType::kCoolboy);
    EXPECT_EQ(arguments.format, RomFormat::kNes20);
    const BuildSettings& settings = arguments.settings;
    EXPECT_EQ(Numbers(settings), Numbers(LoadBuildSettings(*MakeMemoryStore())));
    EXPECT_FALSE(settings.PageNumber || settings.ShowNumberOrder || settings.ExternMenuEnable);
}

TEST(Arguments, EveryOptionReachesItsSetting) {
    const Arguments arguments =
        Parse(
            "build --board mindkids --menu-size 512 --page-size 20 --style white --music 2 "
            "--page-number --insert-row --turning-speed 4 --number --dot --fill --extern-menu "
            "m.asm "
            "--keep-work kept --report - -o x.UNF g.nes")
            .arguments.value();
    const BuildSettings& settings = arguments.settings;
    EXPECT_EQ(arguments.board, BoardType::kMindkids);
    EXPECT_EQ(arguments.format, RomFormat::kUnif);
    EXPECT_EQ(Numbers(settings), std::tuple(32u, 20u, 4u, 2u, 1u));
    EXPECT_TRUE(settings.PageNumber && settings.NameInsertRow && settings.ShowNumberOrder &&
                settings.ShowNumberDot && settings.ShowNumberFill && settings.ExternMenuEnable);
    EXPECT_TRUE(settings.ExternMenuPath.is_absolute());
    EXPECT_EQ(arguments.keepWork, "kept");
    EXPECT_EQ(arguments.report, "-");
    EXPECT_FALSE(settings.CustomEnable);
    const Arguments exported =
        Parse("export --board coolgirl --menu-size 256 --design s.fcm -d x g.nes")
            .arguments.value();
    EXPECT_TRUE(exported.settings.CustomEnable);
    EXPECT_EQ(exported.design, "s.fcm");
    EXPECT_EQ(exported.settings.ExportRomType, 1u);
    EXPECT_EQ(exported.settings.ExportMenuUnits(), 16u);
}

TEST(Arguments, WrongUsageIsRefused) {
    std::istringstream wrong(
        ";bild x.nes;build x.nes;build -o x.nes;build -o x.nes --frobnicate g.nes;"
        "build -o x.nes --board coolbox g.nes;build -o x.nes --menu-size 64 g.nes;"
        "build -o x.nes --page-size 12 g.nes;build -o x.nes --music 6 g.nes;"
        "build -o x.nes --turning-speed 0 g.nes;build -o x.nes --format ines g.nes;"
        "build -o x.nes --json g.nes;export g.nes;info --report x g.nes;"
        "info --design x.fcm g.nes;build -o x.nes --design '' g.nes;design;"
        "design pack folder;design pack -o x.fcm;design unpack x.fcm;"
        "design unpack x.fcm -o y;design pack a b -o x.fcm;design info;design convert x.fcm;"
        "design convert --save tiles=x;design convert --save sprites;"
        "design convert --save sprites=;design convert --save video-memory-2000=x;"
        "design convert --save sprites=x --load characters=x;");
    for (std::string line; std::getline(wrong, line, ';');) {
        const auto parsed = Parse(line);
        EXPECT_FALSE(parsed.arguments) << line;
        EXPECT_EQ(parsed.exitCode, 2);
        EXPECT_FALSE(parsed.text.empty());
    }
    EXPECT_EQ(Parse("--help").exitCode, 0);
    EXPECT_THAT(Parse("--version").text, HasSubstr("bankweaver-cli 0."));
}

TEST(Arguments, ThePageTellsEveryOption) {
    const std::string page = test::ReadText(BANKWEAVER_CLI_PAGE);
    std::set<std::string> options;
    for (const char* command : {"info", "build", "export", "list"}) {
        const std::string help = Parse(std::string(command) + " --help").text;
        const std::regex option("--[a-z][a-z-]+");
        const std::sregex_token_iterator found(help.begin(), help.end(), option);
        options.insert(found, std::sregex_token_iterator());
        EXPECT_THAT(page, HasSubstr("bankweaver-cli " + std::string(command)));
    }
    EXPECT_GT(options.size(), 15u);
    for (const std::string& option : options)
        EXPECT_THAT(page, HasSubstr("`" + option)) << "docs/cli.md doesn't tell of " << option;
}

}  // namespace
}  // namespace bw
