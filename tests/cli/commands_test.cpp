#include "cli/command_fixture.h"
#include "designer/files/png_file.h"
#include "support/files.h"
#include "support/numbers.h"

namespace bw {
namespace {

TEST_F(Commands, BuildsFromFilesFoldersAndLists) {
    Image("games/b/two.NES", {2, 1, 0}, 2);
    Image("games/a.nes", {1, 1, 0}, 1);
    WriteText(folder_ / "games/notes.txt", "no game");
    Image("three.nes", {8, 4, 4}, 3);
    Done("list -o kept games three.nes");
    EXPECT_THAT(ReadText(folder_ / "kept.fcl"),
                AllOf(HasSubstr("count=3"), HasSubstr("00000_name=a\r\n"),
                      HasSubstr("00001_name=two\r\n"), HasSubstr("00002_check=1")));
    const rapidjson::Document report = Json(Done("build -o direct.nes --report - games three.nes"));
    Done("build -o listed.nes --report listed.json kept.fcl");
    EXPECT_TRUE(ReadText(folder_ / "direct.nes") == ReadText(folder_ / "listed.nes"));
    EXPECT_STREQ(report["board"].GetString(), "COOLBOY");
    EXPECT_EQ(report["romSize"].GetUint() + 16, std::filesystem::file_size(folder_ / "direct.nes"));
    ASSERT_EQ(report["games"].Size(), 3u);
    const std::string rom = ReadText(folder_ / "direct.nes").substr(16);
    const auto& game = report["games"][2];
    EXPECT_STREQ(game["name"].GetString(), "three");
    EXPECT_EQ(game["prgRegisters"].Size(), 4u);
    const std::string image = ImageBytes({8, 4, 4}, 3);
    EXPECT_TRUE(rom.compare(game["prgOffset"].GetUint(), 0x20000, image, 16, 0x20000) == 0);
    EXPECT_TRUE(rom.compare(game["chrOffset"].GetUint(), 0x8000, image, 16 + 0x20000, 0x8000) == 0);
}

TEST_F(Commands, TellsWhatImagesHold) {
    Image("one.nes", {2, 1, 4, 3});
    WriteText(folder_ / "bad.nes", "MES");
    EXPECT_THAT(Done("info one.nes").out,
                AllOf(HasSubstr("Mapper #"), HasSubstr(" 2 (032KB)   1 (008KB)")));
    const RunResult json = Run("info --json one.nes bad.nes");
    EXPECT_EQ(json.exitCode, 1);
    EXPECT_THAT(json.err, HasSubstr("bad.nes not is a nes file!"));
    EXPECT_THAT(Run("info bad.nes").out, IsEmpty()) << "a table's head alone";
    const rapidjson::Document info = Json(json);
    ASSERT_EQ(info["games"].Size(), 1u);
    const auto& game = info["games"][0];
    EXPECT_EQ(game["mapper"].GetInt(), 4);
    EXPECT_STREQ(game["mirroring"].GetString(), "vertical");
    EXPECT_TRUE(game["battery"].GetBool() && game["coolboy"].GetBool());
}

TEST_F(Commands, ListFilesKeepOrderNamesAndChecksUpToTheLimit) {
    Image("b.nes", {1, 1, 0}, 1);
    Image("a.nes", {1, 1, 0}, 2);
    WriteText(folder_ / "games.fcl",
              "\xEF\xBB\xBF[history]\r\n00000_check=1\r\n00000_name=Bee = \"1\"\r\n"
              "00000_path_relative=b.nes\r\n00001_check=0\r\n00001_name=Left out\r\n"
              "00001_path_relative=a.nes\r\n00002_check=1\r\n00002_name=Ay\r\n"
              "00002_path=nowhere\\a.nes\r\n00002_path_relative=.\\a.nes\r\ncount=3");
    EXPECT_THAT(Done("list games.fcl").out,
                AllOf(HasSubstr("1  Bee = \"1\""), HasSubstr("-  Left out")));
    Done("build -o x.bin --number games.fcl");
    EXPECT_THAT(ReadText(folder_ / "x.bin"), HasSubstr("\x0B"
                                                       "1.BEE = \"1\"\x04"
                                                       "2.AY"));

    WriteText(folder_ / "long.fcl", "[history]\r\ncount=20001");
    const RunResult run = Done("list --json long.fcl");
    EXPECT_THAT(run.err, HasSubstr("Warn: The maximum processing limit of the current list is "
                                   "20000 entries, and the excess will be discarded"));
    EXPECT_EQ(Json(run)["games"].Size(), 20000u);
}

TEST_F(Commands, RefusesBadInput) {
    Image("good.nes", {1, 1, 0}, 1);
    WriteText(folder_ / "foreign.nes", "UNIF no game of ours");
    WriteText(folder_ / "cut.nes", ImageBytes({2, 1, 0}, 2).substr(0, 20000));
    WriteText(folder_ / "large.nes", ImageBytes({1, 1, 0}, 3).replace(7, 3, "\x08\0\x01"s));
    WriteText(folder_ / "wrong.fcl", std::string("\xFE\xFF\0[\0h", 6));
    WriteText(folder_ / "gone.fcl",
              "[history]\r\n00000_check=1\r\n00000_name=Lost\r\n00000_path=lost.nes\r\ncount=1");
    std::filesystem::create_directory(folder_ / "empty");

    ExpectRefused("build -o old.nes good.nes missing.nes", "missing.nes: No such file");
    ExpectRefused("build -o old.nes good.nes foreign.nes", "foreign.nes not is a nes file!");
    const std::pair<std::string, std::string> warnings[] = {
        {"good.nes cut.nes",
         "2.cut is cut short: its header announces 40976 bytes, the file has 20000."},
        {"good.nes large.nes",
         "2.large asks in its NES 2.0 header for 4218896 bytes. A build takes "},
        {"good.nes ./good.nes", "good.nes takes part more than once: as number 1 and 2"},
        {"good.nes --extern-menu cut_menu.nes",
         "cut_menu.nes is cut short: its header announces 131088 bytes"}};
    WriteText(folder_ / "cut_menu.nes", ImageBytes({8, 0, 4}, 2).substr(0, 99999));
    for (const auto& [games, words] : warnings) {
        EXPECT_THAT(Done("build -o warned.nes " + games).err, HasSubstr("Warn: "s)) << games;
        ExpectRefused("build --strict -o old.nes " + games, words);
    }
    ExpectRefused("build -o old.nes wrong.fcl", "wrong.fcl: There is no list of games");
    ExpectRefused("build -o old.nes gone.fcl", "1.lost Not a valid NES file!");
    ExpectRefused("build -o old.nes empty", "empty holds no game images");
    ExpectRefused("build -o no/folder/x.nes good.nes", "no/folder/x.nes: No such file");
    for (const char* options :
         {"-o good.nes good.nes", "-o good good.nes", "--report ./good.nes -o old.nes good.nes",
          "--report old.nes -o old.nes good.nes", "--report gone.fcl -o old.nes gone.fcl",
          "--extern-menu old.asm -o old.nes good.nes"})
        ExpectRefused("build "s + options, "Choose another name.");
}

constexpr const char* kDesignText = R"(
caption "MY SCREEN"
caption-position 1 1
items-position 4 20
page-number-position 31 28
large-cursor 1
tall-sprites 1
sprite 10 20 41 palette=2 flip-h
text 0 3 "HI"
)";

TEST_F(Commands, DesignsAreUnpackedAndPacked) {
    Pack(kDesignText, "one");
    Done("design unpack one.fcm -d deep/apart");
    Done("design pack deep/apart -o two.FCM");
    EXPECT_EQ(ReadText(folder_ / "two.FCM"), ReadText(folder_ / "one.fcm"));
    EXPECT_THAT(ReadText(folder_ / "deep/apart/design.txt"),
                HasSubstr("sprite 10 20 41 palette=2"));

    WriteText(folder_ / "bad.fcm", "no design");
    std::filesystem::create_directory(folder_ / "wrong");
    WriteText(folder_ / "wrong/design.txt", "tall-sprites 1\ntile 1\n");
    ExpectRefused("design pack nowhere -o old.nes", "nowhere/design.txt: No such file");
    ExpectRefused("design pack wrong -o one.fcm", "wrong/design.txt:2: the line ends, a row");
    ExpectRefused("design pack mine -o no/folder/x.fcm", "no/folder/x.fcm: No such file");
    ExpectRefused("design unpack bad.fcm -d new", "bad.fcm: no design file");
    ExpectRefused("design unpack one.fcm -d bad.fcm", "bad.fcm: ");
    EXPECT_FALSE(std::filesystem::exists(folder_ / "new"));
    EXPECT_EQ(ReadText(folder_ / "two.FCM"), ReadText(folder_ / "one.fcm"));
}

TEST_F(Commands, PartsGoIntoDesignsAndOut) {
    Pack(kDesignText, "one");
    WriteText(folder_ / "p.pal", std::string(16, '\x21'));
    WriteText(folder_ / "n.bin", "\x07\x08");
    Done(
        "design convert one.fcm --load background-palette=p.pal --load name-table=n.bin "
        "--save design=two --save sprites=s.spl --save background-palette=q.bin --save texts=t "
        "--save name-table=n");
    EXPECT_EQ(ReadText(folder_ / "s.spl").substr(0, 5), "\x14\x41\x42\x0A\xF8");
    EXPECT_EQ(ReadText(folder_ / "q.bin"), ReadText(folder_ / "p.pal"));
    EXPECT_EQ(ReadText(folder_ / "n.nam").substr(96, 2), "HI");
    EXPECT_EQ(ReadText(folder_ / "n.nam").substr(0, 3), "\x07\x08\0"s);
    Done("design convert --load texts=t.fct --save attributes=a");
    EXPECT_EQ(std::filesystem::file_size(folder_ / "a.attr"), 64u);

    EXPECT_THAT(Run("design info two.fcm").out,
                AllOf(HasSubstr("caption      column 1, row 1    MY SCREEN\n"),
                      HasSubstr("text         column 0, row 3    HI\n"),
                      HasSubstr("tiles        2\nsprites      1                  8x16\n"
                                "cursor       large\n")));
    const rapidjson::Document info = Json(Run("design info --json two.fcm"));
    EXPECT_EQ(info["itemsPosition"]["row"].GetInt(), 20);
    EXPECT_EQ(info["backgroundPalette"][15].GetInt(), 0x21);
    EXPECT_STREQ(info["texts"][0]["text"].GetString(), "HI");

    WriteText(folder_ / "bad.fct", "bad");
    ExpectRefused("design convert --load texts=bad.fct --save design=new",
                  "bad.fct: no design file");
    ExpectRefused("design convert --load texts=no.fct --save design=new", "no.fct: No such file");
    ExpectRefused("design convert bad.fct --save design=new", "bad.fct: no design file");
    ExpectRefused("design convert one.fcm --save design=no/folder/x", "x.fcm: No such file");
    ExpectRefused("design info bad.fct", "bad.fct: no design file");
}

// A character map of a design's text form, each character its own tile but one.
std::string CharactersWithout(int left) {
    std::string map;
    for (int code = 0; code < 256; ++code) {
        map += code % 16 == 0 ? '\n' : ' ';
        AppendHex(map, static_cast<uint32_t>(code == left ? 0 : code), 2);
    }
    return map + "\n";
}

TEST_F(Commands, DesignsAreDrawn) {
    Image("a game.nes", {1, 1, 0});
    Pack(std::string(kDesignText) +
             "background-palette 0F 16 16 16 0F 16 16 16 0F 16 16 16 0F 16 16 16\n"
             "sprite-palette 02 2A 2A 2A 02 2A 2A 2A 02 2A 2A 2A 02 2A 2A 2A\n",
         "one");
    // How many pixels of an area of 8 by 8 have the texts' colour.
    const auto ink = [&](const std::string& options, long column, long row) {
        Done("design render one.fcm 'a game.nes' --scale 1 -o p " + options);
        Picture picture;
        EXPECT_EQ(DecodePng(*ReadFile(folder_ / "p.png"), 256, 240, picture), std::nullopt);
        int64_t count = 0;
        for (long y = row * 8; y < row * 8 + 8; ++y) {
            const auto line = picture.pixels.begin() + y * 256 + column * 8;
            count += std::count(line, line + 8, 0xDB2800u);
        }
        return count;
    };
    EXPECT_GT(ink("", 4, 20), 0) << "the list's A";
    EXPECT_EQ(ink("", 5, 20), 0) << "the blank behind it";
    EXPECT_GT(ink("", 0, 3), 0) << "the text's H";
    EXPECT_EQ(ink("", 31, 28), 0) << "no page number";
    EXPECT_GT(ink("--page-number", 31, 28), 0);
    EXPECT_GT(ink("--number", 5, 20), 0) << "the A behind 1";
    EXPECT_EQ(ink("--layers list,cursor", 0, 3), 0);
    EXPECT_GT(ink("--layers list,cursor", 4, 20), 0);

    Done("design render one.fcm --view tiles --scale 3 -o t.png");
    Picture tiles;
    EXPECT_EQ(DecodePng(*ReadFile(folder_ / "t.png"), 1536, 768, tiles), std::nullopt);
    WriteText(folder_ / "bad.fcm", "bad");
    ExpectRefused("design render bad.fcm -o new", "bad.fcm: no design file");
    ExpectRefused("design render one.fcm none.nes -o new", "none.nes: No such file");
    ExpectRefused("design render one.fcm -o no/folder/x", "x.png: No such file");
    EXPECT_EQ(Run("design render one.fcm --layers paint -o new").exitCode, 2);
    EXPECT_EQ(Run("design render one.fcm --scale 9 -o new").exitCode, 2);
}

TEST_F(Commands, DesignsAreChecked) {
    Image("g\xC3\xA9nie.nes", {1, 1, 0});
    const std::string good = "items-position 4 20\ncursor 22 160 1F\n";
    Pack(good, "good.fcm");
    const RunResult none = Done("design check good.fcm g\xC3\xA9nie.nes");
    EXPECT_THAT(none.out, IsEmpty());
    EXPECT_EQ(none.err, "No problems\n");
    EXPECT_TRUE(Json(Done("design check --json good.fcm"))["problems"].Empty());

    Pack(good + "text -2 3 \"TEXT\"\nsprite 8 8 80\n", "odd.fcm");
    EXPECT_EQ(Done("design check -q odd.fcm").out,
              "warning: The screen's edge cuts text 1 (\"TEXT\"). Drag it inward, or make it "
              "shorter.\nwarning: Sprite 1 shows nothing: its tile 80 is blank. Draw that tile, or "
              "remove the sprite.\n");
    const rapidjson::Document json = Json(Done("design check --json odd.fcm"));
    const auto& sprite = json["problems"][1];
    EXPECT_STREQ(sprite["severity"].GetString(), "warning");
    EXPECT_THAT(sprite["text"].GetString(), HasSubstr("tile 80 is blank"));
    EXPECT_STREQ(sprite["place"]["kind"].GetString(), "sprite");
    EXPECT_EQ(sprite["place"]["number"].GetInt(), 1);

    // The options of the list count, and the names are those of a ROM.
    const std::string games = Images(11, "", {1, 0, 0});
    const RunResult full = Run("design check --insert-row good.fcm" + games);
    EXPECT_EQ(full.exitCode, 1);
    EXPECT_THAT(full.out,
                StartsWith("error: The list begins in row 20, where a page has room for 5"));
    Pack(good + "characters" + CharactersWithout('.'), "pointless.fcm");
    EXPECT_THAT(Done("design check --number pointless.fcm 1.nes").out,
                StartsWith("warning: \".\" has no tile and isn't seen (name 1)."));
    ExpectRefused("design check none.fcm", "none.fcm: No such file");
    ExpectRefused("design check good.fcm none.nes", "none.nes: No such file");
}

// A build's own rule, and what the assembler makes of a design at its limit.
TEST_F(Commands, SpritesPastTheBankAreRefusedByCheckAndBuild) {
    Image("one.nes", {1, 1, 0});
    std::string sprites = "items-position 4 5\n";
    for (int i = 0; i < 704; ++i)
        sprites += "sprite 8 8 41\n";
    Pack(sprites, "full.fcm");
    Pack(sprites + "sprite 8 8 41\n", "fuller.fcm");
    Done("build --design full.fcm -o x.nes one.nes");
    Done("design check full.fcm one.nes");
    EXPECT_EQ(Run("build --design fuller.fcm -o x.nes one.nes").exitCode, 1);
    EXPECT_EQ(Run("design check fuller.fcm one.nes").exitCode, 1);
}

TEST_F(Commands, PicturesBecomeScreens) {
    Done("design convert --save design=one");
    Done("design render one.fcm --scale 1 --layers list,colours -o p");
    const rapidjson::Document report =
        Json(Done("design import-picture -q --report - -o two p.png one.fcm"));
    EXPECT_TRUE(report["tiles"].GetUint() > 0 && report["cellsWithLoss"].GetUint() == 0);
    EXPECT_EQ(report["meanError"].GetDouble(), 0);
    EXPECT_THAT(Run("design import-picture --at 2,4 --keep-tiles --keep-palettes --dither ordered "
                    "--report r.json -o three p.png")
                    .err,
                HasSubstr("What hangs over the edge is cut off."));
    EXPECT_THAT(ReadText(folder_ / "r.json"), HasSubstr("\"cellsWithLoss\": "));
    WriteText(folder_ / "bad.png", "no picture");
    ExpectRefused("design import-picture -o new bad.png", "bad.png: no PNG picture");
    ExpectRefused("design import-picture -o new none.png", "none.png: No such file");
    ExpectRefused("design import-picture -o new p.png bad.png", "bad.png: no design file");
    ExpectRefused("design import-picture -o no/folder/x p.png", "x.fcm: No such file");
}

TEST_F(Commands, DesignsReachTheBuild) {
    Image("good.nes", {1, 1, 0}, 1);
    Pack(kDesignText, "s.fcm");
    EXPECT_THAT(Done("export -q --design s.fcm --page-size 5 -d out good.nes").err, IsEmpty());
    const auto exported = [&](const std::string& name) { return ReadText(folder_ / "out" / name); };
    EXPECT_EQ(exported("game_caption_data.asm"), " .STR \"MY SCREEN\"");
    EXPECT_EQ(exported("game_sprite_list.asm"), " .DB $14,$41,$42,$0A\r\n");
    // The file has no large cursor of its own: the default one, beside the list.
    EXPECT_EQ(exported("game_big_arrow_data.bin").substr(0, 8), "\x9C\x02\0\x0E\x9C\x03\0\x16"s);
    EXPECT_THAT(exported("game_config.asm"),
                AllOf(HasSubstr("CUSTOM_MENU_ENABLE = 1\r\n"), HasSubstr("BIG_CURSOR = 1\r\n"),
                      HasSubstr("BIG_SPRITE = 1\r\n"), HasSubstr("CAPTION_LENGTH = 9\r\n"),
                      HasSubstr("CURSOR_ARROW_X   =  $16\r\nCURSOR_ARROW_Y   =  $9F\r\n")));
    Done("build --design s.fcm -o x.nes good.nes");
}

TEST_F(Commands, DesignsThatCantBeShownAreRefused) {
    const std::string games = Images(11, "", {1, 0, 0});
    Pack("items-position 4 21", "d.fcm");
    ExpectRefused("build -o old.nes --design d.fcm" + games, "The screen has room for 9 names");
    ExpectRefused("build -o old.nes --report d.fcm --design d.fcm 1.nes", "Choose another name.");
    Pack("page-number-position 30 29", "d.fcm");
    ExpectRefused("build -o old.nes --page-number --design d.fcm" + games,
                  "d.fcm: The design's page number lies outside the screen");
    Pack("items-position 4 30", "d.fcm");
    ExpectRefused("export -d . --design d.fcm" + games,
                  "d.fcm: The design's list of games lies outside the screen");
    WriteText(folder_ / "cut.fcm", ReadText(folder_ / "d.fcm").substr(0, 20));
    WriteText(folder_ / "empty.fcm", "");
    ExpectRefused("build -o old.nes --design cut.fcm 1.nes",
                  "cut.fcm: chunk at offset 0, type 11: its size is 8 bytes, but 4 are left");
    ExpectRefused("build -o old.nes --design empty.fcm 1.nes", "empty.fcm: the file is empty");
    ExpectRefused("export -d . --design none.fcm 1.nes", "none.fcm: No such file");
    ExpectRefused("build -o old.nes --design 1.nes 2.nes", "1.nes: ");

    Pack("caption-position -1 2\n", "d.fcm");
    EXPECT_THAT(Run("build -o x.nes --design d.fcm 1.nes").err,
                HasSubstr("column -1, row 2 is outside the screen. The console shows it at column "
                          "31, row 1."));
}

TEST_F(Commands, RefusesMoreThanTheBoardOrTheDiskHolds) {
    const std::string games = Images(17, "big", {128, 0, 4});
    ExpectRefused("build -o old.nes" + games, "ROM size limit: 32MB(Current: 36.000MB)");
    Done("build --board coolgirl -o old.nes" + games);
}

TEST_F(Commands, ListsAreMadeToFitABoard) {
    const std::string games = Images(17, "big", {128, 0, 4});
    ExpectRefused("build -o old.nes" + games, "Over by 4.000MB.");
    ExpectRefused("build -o old.nes" + games, "--leave-out fewest");
    const auto fit = Json(Done("info --fit --json" + games));
    EXPECT_EQ(fit["over"].GetUint(), 4u << 20);
    EXPECT_EQ(fit["games"][0]["adds"].GetUint(), 2u << 20);
    EXPECT_THAT(Done("info --fit --board coolgirl" + games).out, HasSubstr("92.000MB left."));
    const RunResult build = Done("build --leave-out fewest -o cut.nes" + games);
    EXPECT_THAT(build.err, AllOf(HasSubstr("17.big"), HasSubstr("2 games left out, 15 stay")));
    Done("list --leave-out last -o cut.fcl" + games);
    EXPECT_THAT(Done("list --fill-up --board coolgirl cut.fcl").err,
                HasSubstr("2 games taken, 17 in all"));
    EXPECT_THAT(Done("info --why big1.nes").out, HasSubstr("runs"));
    EXPECT_THAT(Done("build --keep-places cut.nes --leave-out last -o cut.nes" + games).err,
                HasSubstr("All 256 sectors of 128KB are as on the earlier cart"));
}

TEST_F(Commands, ACartInTheGamesFolderIsNoGame) {
    Image("games/one.nes", {1, 1, 0}, 1);
    Done("build -o games/cart.nes games");
    EXPECT_THAT(Done("build -o games/cart.nes games/").err,
                AllOf(HasSubstr("cart.nes is the output"), HasSubstr("1 game(s)")));
}

TEST_F(Commands, ProblemsNameTheFileAndTheReason) {
    Image("good.nes", {1, 1, 0});
    WriteText(folder_ / "big.chr", "");
    std::filesystem::resize_file(folder_ / "big.chr", 20 << 20);
    Done("design convert --save design=one");
    std::filesystem::create_directories(folder_ / "folder.png/folder.nes");
    ExpectRefused("design render one.fcm -o folder", "folder.png: This is a folder, not a file");
    ExpectRefused("build -o folder.png/folder good.nes", "folder.png/folder.nes: This is a folder");
    ExpectRefused("design convert --load background-tiles=big.chr --save design=new",
                  "big.chr: The file has 20971520 bytes, at most 16777216 are allowed");
    ExpectRefused("export -d good.nes/x good.nes", "good.nes: This is a file, not a folder");
}

TEST_F(Commands, GamesOfAnotherBoardAreLeftOutOnRequest) {
    Image("one.nes", {2, 1, 0}, 1);
    Image("two.nes", {8, 0, 2}, 2);
    Image("three.nes", {1, 1, 0, 4}, 3);  // with a trainer
    const std::string games = "one.nes two.nes three.nes";
    ExpectRefused(
        "build -o old.nes " + games,
        "COOLBOY runs these mappers: 0, 4, 74.\n--board coolgirl runs more of these games");
    const RunResult dry = Done("build --dry-run --skip-unsupported -o x.nes " + games);
    EXPECT_THAT(dry.err,
                AllOf(HasSubstr("Left out: 2.two. COOLBOY, MINDKIDS: mapper 2 isn't"),
                      HasSubstr("Left out: 3.three. COOLBOY, MINDKIDS: games with a trai")));
    EXPECT_THAT(dry.out, AllOf(HasSubstr("1       one         0         0000000 +32KB"),
                               HasSubstr("COOLBOY: 1 of 1024 games, 0.500MB used, 31.500MB free")));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "x.nes"));
    EXPECT_EQ(Leftovers(), 0);
    EXPECT_THAT(Done("build --skip-unsupported --board coolgirl -o x.nes " + games).err,
                HasSubstr("COOLGIRL, 2 game(s)"));
    EXPECT_THAT(Done("info two.nes").out, HasSubstr("\ntwo  COOLBOY, MINDKIDS: mapper 2 isn't"));
    EXPECT_STREQ(Json(Done("info --json one.nes"))["games"][0]["reason"].GetString(), "");
}

TEST_F(Commands, ExportsWithoutABuild) {
    Image("good.nes", {1, 1, 0}, 1);
    Done("export --board coolgirl --menu-size 256 -d new/folder good.nes");
    EXPECT_THAT(ReadText(folder_ / "new/folder/game_config.asm"),
                HasSubstr("BOARD_TYPE = 2\r\nMENU_PRG_SIZE = 16"));
    EXPECT_EQ(ReadText(folder_ / "new/folder/game_list.txt"), "good\r\n");
    Image("mapper7.nes", {8, 0, 7});
    const RunResult refused = Run("export -d other mapper7.nes");
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.err, HasSubstr("1.mapper7 Mapper7 not supported!"));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "other/game_config.asm"));
}

}  // namespace
}  // namespace bw
