#include "cli/arguments.h"

#include <sstream>

#include <gmock/gmock.h>

namespace bw {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

// Of words with blanks between them; '' is an empty one.
ParseResult Parse(const std::string& line) {
    std::istringstream text(line);
    std::vector<std::string> words;
    for (std::string word; text >> word;)
        words.push_back(word == "''" ? "" : word);
    return ParseArguments(words);
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
    EXPECT_TRUE(arguments.keepWork->is_absolute() && arguments.keepWork->filename() == "kept");
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

TEST(Arguments, WrongUsageIsRefusedByName) {
    const std::pair<const char*, const char*> wrong[] = {
        {"", "a command is missing"},
        {"bild x.nes", "unknown command \"bild\"; did you mean \"build\"?"},
        {"help frobnicate", "unknown command \"frobnicate\""},
        {"design", "a command is missing"},
        {"design park x", "\"park\"; did you mean \"pack\"?"},
        {"build x.nes", "-o,--output is missing"},
        {"build -o x.nes", "INPUT is missing"},
        {"build g.nes --output", "--output needs a value"},
        {"build -o a -o b g.nes", "--output may be given only once"},
        {"build -o x.nes --frobnicate g.nes", "unknown option --frobnicate"},
        {"build -o x.nes --json g.nes", "unknown option --json"},
        {"build -o x.nes --board coolbox g.nes", "--board: \"coolbox\" is none of coolboy, mindk"},
        {"build -o x.nes --menu-size 64 g.nes", "--menu-size: \"64\""},
        {"build -o x.nes --page-size 12 g.nes", "--page-size: \"12\""},
        {"build -o x.nes --music 6 g.nes", "--music: \"6\""},
        {"build -o x.nes --turning-speed 0 g.nes", "--turning-speed: \"0\""},
        {"build -o x.nes --format ines g.nes", "--format: \"ines\""},
        {"build -o - g.nes", "--output: this can't go to standard output"},
        {"build -o '' g.nes", "--output: the value is empty"},
        {"build -o x.nes --report '' g.nes", "--report: the value is empty"},
        {"build -o x.nes --keep-work '' g.nes", "--keep-work: the value is empty"},
        {"build -o x.nes --design '' g.nes", "--design: the value is empty"},
        {"build -o x.nes --extern-menu '' g.nes", "--extern-menu: the value is empty"},
        {"build -o x.nes ''", "INPUT: the value is empty"},
        {"build --dry-run --report x g.nes", "leave --report out"},
        {"export g.nes", "-d,--directory is missing"},
        {"info --report x g.nes", "unknown option --report"},
        {"list -o '' g.nes", "--output: the value is empty"},
        {"design pack folder", "-o,--output is missing"},
        {"design pack -o x.fcm", "FOLDER is missing"},
        {"design unpack x.fcm", "-d,--directory is missing"},
        {"design pack a b -o x.fcm", "unexpected argument \"b\""},
        {"design info", "FILE is missing"},
        {"design check", "FILE is missing"},
        {"design convert x.fcm", "--save is missing"},
        {"design convert --save tiles=x", "--save: \"tiles=x\" is no known part"},
        {"design convert --save sprites=", "--save: \"sprites=\""},
        {"design convert --save video-memory-2000=x", "--save: "},
        {"design convert --save sprites=x --load characters=x", "--load: "},
        {"design render x.fcm -o y --layers list,paint", "\"paint\" is none of background,"},
        {"design render x.fcm -o y --scale 9", "--scale: \"9\""},
        {"design import-picture x.png", "-o,--output is missing"},
        {"design import-picture -o y x.png --at 32,0", "--at: \"32,0\" is no cell"},
        {"design import-picture -o y x.png --at 3", "--at: \"3\" is no cell"},
        {"design import-picture -o y x.png --dither much", "--dither: \"much\""}};
    for (const auto& [line, words] : wrong) {
        const auto parsed = Parse(line);
        EXPECT_FALSE(parsed.arguments) << line;
        EXPECT_EQ(parsed.exitCode, 2);
        EXPECT_THAT(parsed.text, HasSubstr(words)) << line;
    }
    for (const char* line : {"--help", "help", "help build", "build --help"})
        EXPECT_EQ(Parse(line).exitCode, 0) << line;
    EXPECT_EQ(Parse("help build").text, Parse("build --help").text);
    EXPECT_THAT(Parse("-V").text, HasSubstr("bankweaver-cli 0."));
}

// An option with a list of values leaves the words behind it to the command.
TEST(Arguments, OptionsTakeOneWord) {
    const Arguments convert =
        Parse("design convert --load texts=a --save design=b --save sprites=c old.fcm")
            .arguments.value();
    EXPECT_EQ(convert.design, "old.fcm");
    EXPECT_EQ(convert.saves.size(), 2u);
    const Arguments render =
        Parse("design render -o x --layers list,cursor old.fcm g.nes").arguments.value();
    EXPECT_EQ(render.design, "old.fcm");
    EXPECT_THAT(render.layers, ElementsAre("list", "cursor"));
    EXPECT_THAT(render.inputs, ElementsAre("g.nes"));
}

}  // namespace
}  // namespace bw
